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

#include <algorithm>
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

// Runs xdotool on the test's display: its exit status, its output in *out.
int Xdotool(const std::string &display, const std::string &args, std::string *out = nullptr) {
    std::string cmd = "DISPLAY=" + display + " timeout 10 xdotool " + args + " 2>/dev/null";
    FILE *p = popen(cmd.c_str(), "r");
    if (!p) return -1;
    char buf[256];
    while (fgets(buf, sizeof buf, p))
        if (out) *out += buf;
    return pclose(p);
}

// The visible windows whose whole title is `title`. xdotool reads titles
// in the C locale, so only letters, digits and spaces are matched as they
// are; anything else matches any run of bytes.
std::vector<Window> FindWindows(const std::string &display, const std::string &title) {
    std::string pattern = "^", ids;
    for (char c : title)
        if (std::isalnum(uint8_t(c)) || c == ' ')
            pattern += c;
        else if (pattern.back() != '*')
            pattern += ".*";
    Xdotool(display, "search --onlyvisible --name '" + pattern + "$'", &ids);
    std::istringstream in(ids);
    std::vector<Window> found;
    for (Window id; in >> id;) found.push_back(id);
    return found;
}

// Pixels of the window that differ from `want` (all when the sizes
// differ); *shot gets the window as the X server shows it. The server is
// 24-bit TrueColor: red, green and blue are the bytes 2, 1 and 0 of a pixel.
size_t Differences(Display *d, Window w, const platform::RgbaImage &want,
                   platform::RgbaImage *shot) {
    XWindowAttributes a;
    XImage *img = XGetWindowAttributes(d, w, &a) ? XGetImage(d, w, 0, 0, unsigned(a.width),
                                                             unsigned(a.height), AllPlanes, ZPixmap)
                                                 : nullptr;
    if (!img) return size_t(-1);
    *shot = platform::RgbaImage{a.width, a.height, 0, 0, {}};
    size_t n = a.width == want.width && a.height == want.height ? 0 : size_t(-1);
    for (int y = 0; y < a.height; ++y)
        for (int x = 0; x < a.width; ++x) {
            unsigned long p = XGetPixel(img, x, y);
            const uint8_t rgba[4] = {uint8_t(p >> 16), uint8_t(p >> 8), uint8_t(p), 255};
            shot->pixels.insert(shot->pixels.end(), rgba, rgba + 4);
            if (n != size_t(-1))
                n += !std::equal(rgba, rgba + 3, &want.pixels[4 * (size_t(y) * a.width + x)]);
        }
    XDestroyImage(img);
    return n;
}

// Waits until a window titled `title` shows exactly the PNG; that window,
// or 0 (with the failure recorded). The last screenshot is written beside
// the PNG (name.x11.png) either way, for a person to look at.
Window WaitForWindow(Display *d, const std::string &display, const std::string &title,
                     const fs::path &png) {
    platform::RgbaImage want, shot;
    std::string bytes = Slurp(png);
    if (!platform::PngDecode(std::vector<uint8_t>(bytes.begin(), bytes.end()), want)) {
        ADD_FAILURE() << "no reference " << png;
        return 0;
    }
    Window match = 0;
    size_t diff = size_t(-1);
    for (auto end = Clock::now() + kPatience; !match && Clock::now() < end;) {
        for (Window w : FindWindows(display, title))
            if ((diff = Differences(d, w, want, &shot)) == 0) match = w;
        if (!match) std::this_thread::sleep_for(std::chrono::milliseconds(100));
    }
    fs::path seen = png;
    platform::PngWrite(seen.replace_extension(".x11.png").string(), shot);
    if (!match)
        ADD_FAILURE() << "\"" << title << "\" never showed " << png << ": " << diff
                      << " pixels differ (" << shot.width << "x" << shot.height << " shown, see "
                      << seen << ")";
    return match;
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

// One step of the demo's scripted session, as its log prints it:
// "[step NN] <window>: <action> (<why>)".
struct Step {
    std::string number, window, action;
};

std::vector<Step> Steps(const std::string &log) {
    std::vector<Step> steps;
    std::istringstream in(log);
    for (std::string line; std::getline(in, line);) {
        size_t close = line.find("] "), colon = line.find(": ", close), why = line.rfind(" (");
        if (line.rfind("[step ", 0) != 0 || colon == line.npos || why == line.npos || why < colon)
            continue;
        steps.push_back({line.substr(6, close - 6), line.substr(close + 2, colon - close - 2),
                         line.substr(colon + 2, why - colon - 2)});
    }
    return steps;
}

// What the demo saves after the session: exactly what was typed and chosen.
constexpr char kSaved[] = "[Ordonnance]\r\nPrescripteur=Dr Nguyen-Lefort\r\n"
                          "Patient=L\xE9"
                          "a Dupr\xE9\r\nMedicament=Ibuprof\xE8ne\r\nVoie=Orale\r\n"
                          "PrisesParJour=3\r\nDoseMg=200.00\r\nDebut=20261201\r\nFin=20261208\r\n"
                          "Renouvelable=0\r\n";

class XServer : public ::testing::Test {
  protected:
    // An Xvfb of its own, on the display number it picks (-displayfd), the
    // size of the platform's screen.
    void SetUp() override {
        char pattern[] = "/tmp/vitrail-xserver-XXXXXX";
        int fds[2];
        ASSERT_TRUE(mkdtemp(pattern) && pipe(fds) == 0);
        dir_ = pattern;
        xvfb_ = std::make_unique<Child>(
            std::vector<std::string>{"Xvfb", "-displayfd", std::to_string(fds[1]), "-screen", "0",
                                     "1280x800x24", "-nolisten", "tcp", "-noreset"},
            std::vector<std::string>{}, dir_ / "xvfb.log", fds[1]);
        close(fds[1]);
        // The number comes in two writes, "N" then a line end: read to the line end.
        pollfd p{fds[0], POLLIN, 0};
        char c = 0;
        while (c != '\n' && name_.size() < 8 && poll(&p, 1, 20000) == 1 && read(fds[0], &c, 1) == 1)
            name_ += c;
        close(fds[0]);
        name_ = ":" + std::to_string(std::atoi(name_.c_str()));
        ASSERT_TRUE(c == '\n' && (display_ = XOpenDisplay(name_.c_str())))
            << "Xvfb did not start: " << Slurp(dir_ / "xvfb.log");
        // A window may go while it is read: that is no reason to exit.
        XSetErrorHandler([](Display *, XErrorEvent *) { return 0; });
        // Each window keeps its whole content off screen, so that a window
        // under a dialog can still be read in full.
        XCompositeRedirectSubwindows(display_, DefaultRootWindow(display_),
                                     CompositeRedirectAutomatic);
    }
    void TearDown() override {
        if (display_) XCloseDisplay(display_);
        xvfb_.reset();
        // Kept when a test fails or VITRAIL_KEEP_XSHOTS is set, for a person to look at.
        if (!HasFailure() && !std::getenv("VITRAIL_KEEP_XSHOTS"))
            fs::remove_all(dir_);
        else
            std::fprintf(stderr, "screenshots kept in %s\n", dir_.c_str());
    }

    // The demo writing into `out`, with the given environment besides its
    // own volumes.
    std::unique_ptr<Child> Demo(std::vector<std::string> env, const fs::path &out) {
        fs::create_directories(out);
        env.push_back("VITRAIL_VOLUMES=");
        return std::make_unique<Child>(std::vector<std::string>{VITRAIL_DEMO, out.string()}, env,
                                       out / "log.txt");
    }

    // Runs the demo to its end; its log.
    std::string RunDemo(std::vector<std::string> env, const fs::path &out) {
        EXPECT_EQ(Demo(std::move(env), out)->Wait(kPatience), 0);
        return Slurp(out / "log.txt");
    }

    // Does what the step says, with real input from xdotool.
    bool Replay(const Step &s, Window w) {
        std::istringstream args(s.action);
        std::string verb, id = std::to_string(w);
        args >> verb;
        if (verb == "close") return CloseBox(display_, w), true;
        if (verb == "click") {
            int x = -1, y = -1;
            args >> x >> y;
            return Do("mousemove --window " + id + " " + std::to_string(x) + " " +
                      std::to_string(y) + " click 1");
        }
        std::string what = s.action.substr(verb.size() + 1);
        if (verb == "type" && what.size() >= 2 && what.find('\'') == what.npos)
            return Do("windowfocus --sync " + id) &&
                   Do("type --delay 30 '" + what.substr(1, what.size() - 2) + "'");
        return verb == "key" && Do("windowfocus --sync " + id) && Do("key " + what);
    }

    bool Do(const std::string &args) { return Xdotool(name_, args) == 0; }

    fs::path dir_;
    std::unique_ptr<Child> xvfb_;
    std::string name_;
    Display *display_ = nullptr;
};

// A person's session on the X server, step by step as the headless session
// played it: every window shows what the headless run wrote for that step,
// pixel for pixel, and the profile saved holds exactly what was typed.
TEST_F(XServer, DemoSessionWithRealInputShowsWhatTheHeadlessRunShowed) {
    fs::path headless = dir_ / "headless", x11 = dir_ / "x11";
    std::string log = RunDemo({"VITRAIL_BACKEND=headless"}, headless);
    std::vector<Step> steps = Steps(log);
    ASSERT_GE(steps.size(), 30u) << log;
    EXPECT_EQ(Slurp(headless / "volumes/Cabinet/ordonnance.ini"), kSaved);

    // VITRAIL_BACKEND unset: the display is there, so SDL is chosen.
    auto demo = Demo({"VITRAIL_BACKEND=", "DISPLAY=" + name_}, x11);
    for (const Step &s : steps) {
        SCOPED_TRACE("step " + s.number + ", " + s.window + ": " + s.action);
        Window w =
            WaitForWindow(display_, name_, s.window, headless / ("step-" + s.number + ".png"));
        ASSERT_TRUE(w);
        if (s.window == "Enregistrement") { // the main window, under the last note
            EXPECT_TRUE(WaitForWindow(display_, name_, "Ordonnance courante",
                                      headless / "prescription.png"));
        }
        ASSERT_TRUE(Replay(s, w));
    }
    ASSERT_EQ(demo->Wait(kPatience), 0) << Slurp(x11 / "log.txt");
    EXPECT_NE(Slurp(x11 / "log.txt").find("== backend sdl"), std::string::npos);
    EXPECT_EQ(Slurp(x11 / "volumes/Cabinet/ordonnance.ini"), kSaved);

    // The scripted session on the display: the agent acts before the
    // display is waited for, and sees every step as the headless run did.
    fs::path agent = dir_ / "agent";
    log = RunDemo({"VITRAIL_BACKEND=sdl", "DISPLAY=" + name_, "VITRAIL_DEMO_SCRIPT=1"}, agent);
    EXPECT_NE(log.find("== backend sdl"), std::string::npos) << log;
    EXPECT_EQ(Slurp(agent / "volumes/Cabinet/ordonnance.ini"), kSaved);
    for (const Step &s : steps)
        EXPECT_EQ(Slurp(agent / ("step-" + s.number + ".png")),
                  Slurp(headless / ("step-" + s.number + ".png")))
            << "step " << s.number;
}

TEST_F(XServer, WithoutTheDisplayHeadlessTakesOverAndSaysSoOnce) {
    std::string log = RunDemo({"VITRAIL_BACKEND=sdl", "DISPLAY=:999"}, dir_ / "nodisplay");
    EXPECT_NE(log.find("== backend headless"), std::string::npos) << log;
    size_t said = log.find("vitrail: no display");
    EXPECT_NE(said, std::string::npos) << log;
    EXPECT_EQ(log.find("vitrail: no display", said + 1), std::string::npos) << log;
    // A host that shows no window never looks for a display, so never says so.
    Child sample({VITRAIL_DRAW_SAMPLE, (dir_ / "sample.png").string()},
                 {"VITRAIL_BACKEND=", "DISPLAY=:999"}, dir_ / "sample.txt");
    EXPECT_EQ(sample.Wait(kPatience), 0);
    EXPECT_EQ(Slurp(dir_ / "sample.txt").find("vitrail:"), std::string::npos);
}

} // namespace
