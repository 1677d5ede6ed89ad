// Replacing a profile file whole, so that it is never seen half written and
// two writers never lose each other's change.
//
//   Step    What it does
//   open    the file (created when missing), refused unless a regular file
//   lock    flock(LOCK_EX); taken again when the path was replaced meanwhile
//   begin   a temporary file ".vitrail-XXXXXX" beside the file (the real one
//           when the path is a symbolic link)
//   commit  old permissions and owner, fdatasync, rename over the file
#include "profile/replace.h"

#include <cerrno>
#include <climits>
#include <cstdlib>
#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

namespace profile {

namespace {

// Opens the file at `path` for reading without blocking on a FIFO; creates
// it empty (mode 0777 whatever the creation mask) when missing.
int OpenOrCreate(const std::string &path) {
    for (int tries = 0; tries < 8; ++tries) {
        int fd = open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
        if (fd >= 0 || errno != ENOENT) return fd;
        fd = open(path.c_str(), O_RDONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0777);
        if (fd >= 0) {
            fchmod(fd, 0777);
            return fd;
        }
        if (errno != EEXIST) return -1;
    }
    return -1;
}

bool SameFile(const struct stat &a, const struct stat &b) {
    return a.st_dev == b.st_dev && a.st_ino == b.st_ino;
}

} // namespace

Replacement::~Replacement() {
    Discard();
    if (fd_ >= 0) close(fd_); // releases the lock
}

Replacement::Opened Replacement::Open(const std::string &path) {
    char real[PATH_MAX];
    path_ = realpath(path.c_str(), real) ? real : path;
    // Bounded: each retry means another writer replaced the file meanwhile.
    for (int tries = 0; tries < 1000; ++tries) {
        int fd = OpenOrCreate(path_);
        if (fd < 0) {
            struct stat st;
            bool unreadable = errno == EACCES && stat(path_.c_str(), &st) == 0 && S_ISREG(st.st_mode);
            return unreadable ? kUnreadable : kRefused;
        }
        struct stat now;
        if (fstat(fd, &st_) != 0 || !S_ISREG(st_.st_mode)) {
            close(fd);
            return kRefused;
        }
        // A file system without locks still gets its rewrite, unguarded.
        while (flock(fd, LOCK_EX) != 0 && errno == EINTR) {
        }
        if (stat(path_.c_str(), &now) == 0 && SameFile(now, st_)) {
            fd_ = fd;
            return kOpened;
        }
        close(fd);
    }
    return kRefused;
}

bool Replacement::Begin() {
    size_t slash = path_.rfind('/');
    temp_ = (slash == std::string::npos ? std::string(".") : path_.substr(0, slash)) +
            "/.vitrail-XXXXXX";
    out_ = mkostemp(temp_.data(), O_CLOEXEC);
    if (out_ < 0) temp_.clear();
    return ok_ = out_ >= 0;
}

bool Replacement::Write(std::string_view bytes) {
    while (ok_ && !bytes.empty()) {
        ssize_t n = write(out_, bytes.data(), bytes.size());
        if (n < 0 && errno == EINTR) continue;
        ok_ = n > 0;
        if (ok_) bytes.remove_prefix(size_t(n));
    }
    return ok_;
}

bool Replacement::Commit() {
    if (!ok_) return false;
    if (st_.st_uid != geteuid() || st_.st_gid != getegid())
        (void)!fchown(out_, st_.st_uid, st_.st_gid); // kept when allowed
    ok_ = fchmod(out_, st_.st_mode & 07777) == 0 && fdatasync(out_) == 0;
    ok_ = close(out_) == 0 && ok_;
    out_ = -1;
    ok_ = ok_ && rename(temp_.c_str(), path_.c_str()) == 0;
    if (ok_) temp_.clear();
    Discard();
    return ok_;
}

void Replacement::Discard() {
    if (out_ >= 0) close(out_);
    out_ = -1;
    if (!temp_.empty()) unlink(temp_.c_str());
    temp_.clear();
}

} // namespace profile
