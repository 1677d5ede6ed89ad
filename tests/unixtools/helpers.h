// Helpers of the shell-tool tests: a scratch folder, a stand-in command put
// first on PATH and a child process of a unique name.
#pragma once

#include <csignal>
#include <filesystem>
#include <fstream>
#include <spawn.h>
#include <string>
#include <sys/wait.h>
#include <unistd.h>

#include "platform/toolbox/gestalt.h"
#include "support/temp_volumes.h"

extern char **environ;

namespace unixtools_test {

namespace fs = std::filesystem;

// A scratch folder (the temporary volumes root) with shortcuts.
struct Scratch : vitrail_test::TempVolumes {
    std::string path(const std::string &relative) const { return (root() / relative).string(); }
    std::string touch(const std::string &relative, std::string_view bytes = "x") const {
        write(relative, bytes);
        return path(relative);
    }
    std::string mkdir(const std::string &relative) const {
        fs::create_directories(root() / relative);
        return path(relative);
    }
};

// Puts `folder` first on PATH for the life of the object.
class PathFirst {
  public:
    explicit PathFirst(const std::string &folder) : old_(getenv("PATH") ? getenv("PATH") : "") {
        setenv("PATH", (folder + ":" + old_).c_str(), 1);
    }
    ~PathFirst() { setenv("PATH", old_.c_str(), 1); }

  private:
    std::string old_;
};

// Makes `folder` the current folder for the life of the object.
class InFolder {
  public:
    explicit InFolder(const fs::path &folder) : old_(fs::current_path()) {
        fs::current_path(folder);
    }
    ~InFolder() {
        std::error_code ec;
        fs::current_path(old_, ec);
    }

  private:
    fs::path old_;
};

// Writes an executable shell script.
inline void WriteScript(const fs::path &file, const std::string &body) {
    std::ofstream(file) << "#!/bin/sh\n" << body;
    fs::permissions(file, fs::perms::owner_all);
}

// A child of this test: a copy of sleep under a unique short name, so the
// process listing shows that name and nothing else of ours matches it.
class NamedChild {
  public:
    explicit NamedChild(const fs::path &folder) {
        static int serial = 0;
        name_ = "vtk" + std::to_string(getpid() % 100000) + "n" + std::to_string(serial++);
        exe_ = folder / name_;
        fs::copy_file("/bin/sleep", exe_);
        fs::permissions(exe_, fs::perms::owner_all);
        std::string program = exe_.string();
        char arg[] = "30";
        char *argv[] = {program.data(), arg, nullptr};
        if (posix_spawn(&pid_, program.c_str(), nullptr, nullptr, argv, environ) != 0) pid_ = 0;
    }
    ~NamedChild() {
        if (pid_ > 0 && !reaped_) {
            kill(pid_, SIGKILL);
            waitpid(pid_, nullptr, 0);
        }
    }
    NamedChild(const NamedChild &) = delete;
    NamedChild &operator=(const NamedChild &) = delete;

    const std::string &name() const { return name_; }
    pid_t pid() const { return pid_; }

    // Waits for the child's end; answers the signal that ended it (0 if none).
    int reap() {
        int status = 0;
        reaped_ = waitpid(pid_, &status, 0) == pid_;
        return reaped_ && WIFSIGNALED(status) ? WTERMSIG(status) : 0;
    }

  private:
    std::string name_;
    fs::path exe_;
    pid_t pid_ = 0;
    bool reaped_ = false;
};

} // namespace unixtools_test
