// Dialogs on a real X server: the test starts its own Xvfb, runs a host
// with the SDL backend, finds its windows by title and works them with
// xdotool (real pointer and keyboard events), then compares what the X
// server shows with the headless run of the same host, pixel for pixel.
// Every wait is bounded; the server and the host are killed on the way out.
#include <gtest/gtest.h>

#include <X11/Xlib.h>
#include <X11/Xutil.h>
#include <X11/extensions/Xcomposite.h>
#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cctype>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <thread>
#include <vector>

#include "platform/quickdraw/png.h"

namespace fs = std::filesystem;
using Clock = std::chrono::steady_clock;

namespace {

// Generous for sanitizer builds on a busy machine; nothing waits longer.
constexpr auto kPatience = std::chrono::seconds(30);

std::string Slurp(const fs::path &path) {
    std::ifstream in(path, std::ios::binary);
    std::ostringstream out;
    out << in.rdbuf();
    return out.str();
}

// A child process in a process group of its own, with its output in a
// file; killed with its group when the object goes.
class Child {
  public:
    Child(std::vector<std::string> argv, std::vector<std::string> env, const fs::path &log,
          int keepFd = -1) {
        pid_ = fork();
        if (pid_ != 0) return;
        setpgid(0, 0);
        for (const std::string &e : env) putenv(const_cast<char *>(e.c_str()));
        int out = open(log.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0644);
        dup2(out, 1), dup2(out, 2);
        for (int fd = 3; fd < 256; ++fd)
            if (fd != keepFd) close(fd);
        std::vector<char *> args;
        for (std::string &a : argv) args.push_back(a.data());
        args.push_back(nullptr);
        execvp(args[0], args.data());
        _exit(127);
    }
    ~Child() {
        if (pid_ <= 0 || status_ >= 0) return;
        kill(-pid_, SIGTERM);
        if (Wait(std::chrono::seconds(3)) < 0) kill(-pid_, SIGKILL), Wait(std::chrono::seconds(3));
    }
    Child(const Child &) = delete;
    Child &operator=(const Child &) = delete;

    // The exit status once the child ended within `limit`, else -1.
    int Wait(Clock::duration limit) {
        for (auto end = Clock::now() + limit; status_ < 0 && Clock::now() < end;) {
            int st = 0;
            if (waitpid(pid_, &st, WNOHANG) == pid_)
                status_ = WIFEXITED(st) ? WEXITSTATUS(st) : 128 + WTERMSIG(st);
            else
                std::this_thread::sleep_for(std::chrono::milliseconds(20));
        }
        return status_;
    }

  private:
    pid_t pid_ = -1;
    int status_ = -1;
};

// An Xvfb of its own on the display number it picks (-displayfd), the size
// of the platform's screen.
class Xvfb {
  public:
    explicit Xvfb(const fs::path &dir) {
        int fds[2];
        if (pipe(fds) != 0) return;
        server_ = std::make_unique<Child>(
            std::vector<std::string>{"Xvfb", "-displayfd", std::to_string(fds[1]), "-screen", "0",
                                     "1280x800x24", "-nolisten", "tcp", "-noreset"},
            std::vector<std::string>{}, dir / "xvfb.log", fds[1]);
        close(fds[1]);
        // The number comes in two writes, "N" then a line end: read to the line end.
        std::string number;
        pollfd p{fds[0], POLLIN, 0};
        char c = 0;
        while (c != '\n' && number.size() < 8 && poll(&p, 1, 20000) == 1 &&
               read(fds[0], &c, 1) == 1)
            number += c;
        close(fds[0]);
        if (c == '\n') name_ = ":" + std::to_string(std::atoi(number.c_str()));
        if (!name_.empty()) display_ = XOpenDisplay(name_.c_str());
        // Each window keeps its whole content off screen, so that a window
        // under a dialog can still be read in full.
        int event, error;
        if (display_ && XCompositeQueryExtension(display_, &event, &error))
            XCompositeRedirectSubwindows(display_, DefaultRootWindow(display_),
                                         CompositeRedirectAutomatic);
    }
    ~Xvfb() {
        if (display_) XCloseDisplay(display_);
    }
    Display *display() const { return display_; }
    const std::string &name() const { return name_; }

  private:
    std::unique_ptr<Child> server_;
    std::string name_;
    Display *display_ = nullptr;
};

// Runs xdotool on the test's display; its output, "" when it fails.
std::string Xdotool(const std::string &display, const std::string &args) {
    std::string cmd = "DISPLAY=" + display + " timeout 10 xdotool " + args + " 2>/dev/null";
    std::string out;
    if (FILE *p = popen(cmd.c_str(), "r")) {
        char buf[256];
        while (fgets(buf, sizeof buf, p)) out += buf;
        if (pclose(p) != 0) out.clear();
    }
    return out;
}

// The window whose whole title is `title`, waited for; 0 when none shows.
// xdotool reads titles in the C locale, so only letters, digits and spaces
// are matched as they are; anything else matches any run of bytes.
Window FindWindow(const std::string &display, const std::string &title) {
    std::string pattern = "^";
    for (char c : title)
        if (std::isalnum(uint8_t(c)) || c == ' ')
            pattern += c;
        else if (pattern.back() != '*')
            pattern += ".*";
    for (auto end = Clock::now() + kPatience; Clock::now() < end;) {
        std::istringstream ids(Xdotool(display, "search --onlyvisible --name '" + pattern + "$'"));
        Window id = 0;
        if (ids >> id) return id;
        std::this_thread::sleep_for(std::chrono::milliseconds(100));
    }
    return 0;
}

// The window's content as the X server shows it, RGBA.
platform::RgbaImage Screenshot(Display *d, Window w) {
    platform::RgbaImage shot;
    XWindowAttributes a;
    if (!XGetWindowAttributes(d, w, &a)) return shot;
    XImage *img = XGetImage(d, w, 0, 0, unsigned(a.width), unsigned(a.height), AllPlanes, ZPixmap);
    if (!img) return shot;
    auto channel = [](unsigned long pixel, unsigned long mask) {
        int shift = 0;
        while (mask && !(mask & 1)) mask >>= 1, ++shift;
        return uint8_t(((pixel >> shift) & mask) * 255 / (mask ? mask : 1));
    };
    shot.width = a.width, shot.height = a.height;
    for (int y = 0; y < a.height; ++y)
        for (int x = 0; x < a.width; ++x) {
            unsigned long p = XGetPixel(img, x, y);
            shot.pixels.insert(shot.pixels.end(),
                               {channel(p, img->red_mask), channel(p, img->green_mask),
                                channel(p, img->blue_mask), 255});
        }
    XDestroyImage(img);
    return shot;
}

// Pixels whose colour differs (alpha aside); all of them when the sizes differ.
size_t Differences(const platform::RgbaImage &a, const platform::RgbaImage &b) {
    if (a.width != b.width || a.height != b.height) return size_t(-1);
    size_t n = 0;
    for (size_t i = 0; i < a.pixels.size(); i += 4)
        n += a.pixels[i] != b.pixels[i] || a.pixels[i + 1] != b.pixels[i + 1] ||
             a.pixels[i + 2] != b.pixels[i + 2];
    return n;
}

// Waits until the window shows exactly the PNG; the last screenshot is
// written beside it (name.x11.png) either way, for a person to look at.
::testing::AssertionResult ShowsExactly(Display *d, Window w, const fs::path &png) {
    platform::RgbaImage want, shot;
    std::string bytes = Slurp(png);
    if (!platform::PngDecode(std::vector<uint8_t>(bytes.begin(), bytes.end()), want))
        return ::testing::AssertionFailure() << "no reference " << png;
    size_t diff = size_t(-1);
    for (auto end = Clock::now() + kPatience; diff != 0 && Clock::now() < end;) {
        shot = Screenshot(d, w);
        if ((diff = Differences(shot, want)) != 0)
            std::this_thread::sleep_for(std::chrono::milliseconds(100));
    }
    fs::path seen = png;
    platform::PngWrite(seen.replace_extension(".x11.png").string(), shot);
    if (diff == 0) return ::testing::AssertionSuccess();
    return ::testing::AssertionFailure() << png << ": " << diff << " pixels differ (" << shot.width
                                         << "x" << shot.height << " shown, see " << seen << ")";
}

// Asks the window to close, as its close box does.
void CloseBox(Display *d, Window w) {
    XEvent e{};
    e.xclient.type = ClientMessage;
    e.xclient.window = w;
    e.xclient.message_type = XInternAtom(d, "WM_PROTOCOLS", False);
    e.xclient.format = 32;
    e.xclient.data.l[0] = long(XInternAtom(d, "WM_DELETE_WINDOW", False));
    e.xclient.data.l[1] = CurrentTime;
    XSendEvent(d, w, False, NoEventMask, &e);
    XFlush(d);
}

class XServer : public ::testing::Test {
  protected:
    void SetUp() override {
        char pattern[] = "/tmp/vitrail-xserver-XXXXXX";
        ASSERT_TRUE(mkdtemp(pattern));
        dir_ = pattern;
        x_ = std::make_unique<Xvfb>(dir_);
        ASSERT_TRUE(x_->display()) << "Xvfb did not start: " << Slurp(dir_ / "xvfb.log");
    }
    void TearDown() override {
        x_.reset();
        // Kept when a test fails or VITRAIL_KEEP_XSHOTS is set, for a person to look at.
        if (!HasFailure() && !std::getenv("VITRAIL_KEEP_XSHOTS"))
            fs::remove_all(dir_);
        else
            std::fprintf(stderr, "screenshots kept in %s\n", dir_.c_str());
    }

    // Runs the host to its end with the given backend and display.
    std::string RunHost(const std::string &backend, const std::string &display,
                        const fs::path &out) {
        fs::create_directories(out);
        Child host({VITRAIL_X_HOST, out.string()},
                   {"VITRAIL_BACKEND=" + backend, "DISPLAY=" + display}, out / "log.txt");
        EXPECT_EQ(host.Wait(kPatience), 0);
        return Slurp(out / "log.txt");
    }

    std::string Do(const std::string &args) { return Xdotool(x_->name(), args); }

    fs::path dir_;
    std::unique_ptr<Xvfb> x_;
};

TEST_F(XServer, HostWindowAndQuestionShowAsHeadlessAndAnswerTheMouse) {
    std::string headless = RunHost("headless", x_->name(), dir_ / "headless");
    EXPECT_NE(headless.find("answer 2"), std::string::npos) << headless;

    fs::path out = dir_ / "x11";
    fs::create_directories(out);
    Child host({VITRAIL_X_HOST, out.string()}, {"VITRAIL_BACKEND=sdl", "DISPLAY=" + x_->name()},
               out / "log.txt");
    Window main = FindWindow(x_->name(), "Fenêtre hôte");
    Window question = FindWindow(x_->name(), "Question");
    ASSERT_TRUE(main && question);
    EXPECT_TRUE(ShowsExactly(x_->display(), main, dir_ / "headless/host.png"));
    EXPECT_TRUE(ShowsExactly(x_->display(), question, dir_ / "headless/question.png"));
    Do("mousemove --sync --window " + std::to_string(question) + " 340 68 click 1"); // "Non"
    ASSERT_EQ(host.Wait(kPatience), 0);
    std::string log = Slurp(out / "log.txt");
    EXPECT_NE(log.find("backend sdl"), std::string::npos) << log;
    EXPECT_NE(log.find("answer 3"), std::string::npos) << log;
}

TEST_F(XServer, MissingDisplayFallsBackToHeadlessAndSaysSoOnce) {
    std::string log = RunHost("sdl", ":999", dir_ / "nodisplay");
    EXPECT_NE(log.find("backend headless"), std::string::npos) << log;
    EXPECT_NE(log.find("answer 2"), std::string::npos) << log;
    size_t said = log.find("vitrail: no display");
    EXPECT_NE(said, std::string::npos) << log;
    EXPECT_EQ(log.find("vitrail: no display", said + 1), std::string::npos) << log;
}

} // namespace
