// Writing profile files: one pass over the old text makes the new one, which
// replaces the file whole (see replace.h).
//
//   Writer state   Meaning
//   not started    nothing read yet (empty file)
//   outside        not in the wanted section
//   inside         after the wanted section's header
//   done           the change is made; the rest is copied
//
// Every line written ends with CR LF. Blank lines are held back and written
// just before the next line that is written; blank lines still held at the
// end of a changed section's file are dropped. Lines are kept whole,
// whatever their length. Runs of lines already in that form are copied from
// the old text to the file in one piece; only the lines the rules act on are
// looked at one by one.
#include <algorithm>
#include <cstdint>
#include <cstring>
#include <string>

#include <vitrail/files.h>
#include <vitrail/profile.h>

#include "profile/load.h"
#include "profile/replace.h"
#include "profile/rules.h"

namespace {

using namespace profile;
constexpr std::string_view kCRLF = "\r\n";
constexpr int32_t kStage = 65536;
constexpr size_t kUnixPathSize = 256;

// The change one writer makes.
struct Change {
    std::string_view section;
    const char *key;   // null: the section writer
    const char *value; // key's value, or the section's text; null deletes
};

// True when `text` holds none of the bytes of `set`.
bool Without(std::string_view text, const char *set) {
    return text.find_first_of(set) == npos;
}

// True when the reader will find what the change writes: names that fit the
// kept part of a line and hold no line ends (a key no "[" either), a value
// without line ends, a section text whose line feeds all follow a carriage
// return. Deletions are always possible.
bool ReadableBack(const Change &c) {
    if (!c.value) return true;
    bool ok = c.section.size() < kLineStored && Without(c.section, "\r\n");
    if (c.key) {
        std::string_view key = c.key;
        return ok && key.size() <= kLineStored && Without(key, "\r\n[") &&
               Without(c.value, "\r\n");
    }
    for (const char *lf = std::strchr(c.value, '\n'); ok && lf; lf = std::strchr(lf + 1, '\n'))
        ok = lf > c.value && lf[-1] == '\r';
    return ok;
}

// The new text as it is made: runs of old bytes that stay as they were go to
// the temporary file straight from the old text; other bytes are gathered in
// the output memory file first.
class Output {
  public:
    Output(Replacement &file, int32_t stage) : file_(file), h_(stage) {}
    void Copy(const char *a, const char *b) {
        if (a != runEnd_) {
            FlushRun();
            FlushStage();
            run_ = a;
        }
        runEnd_ = b;
    }
    void Put(std::string_view s) {
        FlushRun();
        if (MFil_GetPos(h_) + int64_t(s.size()) > kStage) FlushStage();
        ok_ = ok_ && MFil_Write(h_, s.data(), int32_t(s.size())) == int32_t(s.size());
    }
    bool Finish() {
        FlushRun();
        FlushStage();
        return ok_;
    }

  private:
    void FlushRun() {
        if (run_ != runEnd_) ok_ = ok_ && file_.Write(std::string_view(run_, size_t(runEnd_ - run_)));
        run_ = runEnd_ = nullptr;
    }
    void FlushStage() {
        int32_t n = MFil_GetPos(h_);
        if (n <= 0) return;
        const char *p = static_cast<const char *>(MFil_LockPtr(h_, 0));
        ok_ = ok_ && p && file_.Write(std::string_view(p, size_t(n)));
        MFil_Lseek(h_, 0);
    }

    Replacement &file_;
    int32_t h_;
    const char *run_ = nullptr, *runEnd_ = nullptr;
    bool ok_ = true;
};

// One line of the old text.
struct Line {
    std::string_view text; // line feeds dropped
    const char *next;      // where the next line starts
    bool ended;            // ended by a carriage return
    bool asIs;             // written as the old bytes [start, next)
};

Line ReadLine(const char *p, const char *end, std::string &scratch) {
    auto *cr = static_cast<const char *>(std::memchr(p, '\r', size_t(end - p)));
    const char *e = cr ? cr : end;
    Line ln{CleanLine(p, e, scratch), cr ? AfterLineEnd(cr, end) : end, cr != nullptr, false};
    ln.asIs = cr && ln.next == cr + 2 && ln.text.data() == p && ln.text.size() == size_t(e - p);
    return ln;
}

// Blank lines held back: their count and, while they are all CR LF one
// after the other in the old text, where those bytes stand.
struct Held {
    int32_t n = 0;
    const char *from = nullptr, *to = nullptr;
    bool asIs = true;
};

// Makes the new text of one change from the old one.
class Writer {
  public:
    Writer(const Change &c, std::string_view data, Output &out)
        : c_(c), q_{c.section, c.key}, begin_(data.data()), end_(begin_ + data.size()), out_(out),
          st_(data.empty() ? kNotStarted : kOutside) {}

    // False when the change would not be read back (the file is then left alone).
    bool Run() {
        const char *p = begin_;
        while (p < end_ && st_ != kDone) {
            const char *q = NextRulesLine(p);
            if (st_ == kInside && !c_.key) {
                DropLines(p, q);
            } else {
                CopyLines(p, q);
            }
            if (q >= end_) break;
            Line ln = ReadLine(q, end_, scratch_);
            if (!(c_.key ? KeyRules(ln, q) : SectionRules(ln, q))) return false;
            p = ln.next;
        }
        if (st_ == kDone) CopyLines(p, end_);
        EndRules();
        return true;
    }

  private:
    enum State { kNotStarted, kOutside, kInside, kDone };

    const char *NextRulesLine(const char *p) const {
        if (st_ != kInside) return NextHeaderLine(begin_, p, end_);
        if (c_.key) return NextKeyLine(q_, begin_, p, end_);
        auto *b = static_cast<const char *>(std::memchr(p, '[', size_t(end_ - p)));
        if (!b) return end_;
        while (b > p && b[-1] != '\r') --b;
        return b > p ? AfterLineEnd(b - 1, end_) : b;
    }

    void Hold(const char *p, const Line &ln) {
        if (!ln.ended) return; // the empty line the data ends on is not counted
        if (held_.n++ == 0) held_ = Held{1, p, p, true};
        held_.asIs = held_.asIs && ln.asIs && p == held_.to;
        held_.to = ln.next;
    }
    void PutHeld() {
        if (held_.asIs) {
            out_.Copy(held_.from, held_.to);
        } else {
            for (int32_t i = 0; i < held_.n; ++i) out_.Put(kCRLF);
        }
        held_ = Held{};
    }
    // Writes the non-empty line at `p` after the blank lines held.
    void Emit(const char *p, const Line &ln) {
        if (held_.n) PutHeld();
        if (ln.asIs) {
            out_.Copy(p, ln.next);
        } else {
            out_.Put(ln.text);
            out_.Put(kCRLF);
        }
    }
    // Lines at `p` that change no state: written, or held when blank.
    void Take(const char *p, const Line &ln) {
        if (ln.text.empty()) {
            Hold(p, ln);
        } else {
            Emit(p, ln);
        }
    }

    // Writes the lines of [a, b), which change no state: lines already in
    // their written form go in one run, the others one by one.
    void CopyLines(const char *a, const char *b) {
        const char *cut = b;
        if (b == end_ && a < b && b[-1] != '\n') {
            auto *lf = static_cast<const char *>(memrchr(a, '\n', size_t(b - a)));
            cut = lf ? lf + 1 : a;
        }
        if (WrittenAsIs(a, cut)) {
            for (; a < cut && *a == '\r'; a += 2) Hold(a, Line{{}, a + 2, true, true});
            if (a < cut) {
                const char *t = cut;
                while (t - a > 2 && t[-3] == '\n') t -= 2; // blank lines at the end stay held
                if (held_.n) PutHeld();
                out_.Copy(a, t);
                for (; t < cut; t += 2) Hold(t, Line{{}, t + 2, true, true});
            }
            a = cut;
        }
        while (a < b) {
            Line ln = ReadLine(a, b, scratch_);
            Take(a, ln);
            a = ln.next;
        }
    }

    // The old lines of the section being replaced go; blank ones stay held.
    void DropLines(const char *a, const char *b) {
        while (a < b) {
            Line ln = ReadLine(a, b, scratch_);
            if (ln.text.empty()) Hold(a, ln);
            a = ln.next;
        }
    }

    void PutKey() {
        out_.Put(c_.key);
        out_.Put("=");
        out_.Put(c_.value);
        out_.Put(kCRLF);
    }

    // The string writer's rules over one line. A key to set goes in front of
    // the "[" that ends the section, or replaces the old value; a key to
    // delete goes from every occurrence of the section, as the reader would
    // find it in each in turn.
    bool KeyRules(const Line &ln, const char *p) {
        if (ln.text.empty()) return Take(p, ln), true;
        profile::State st = st_ == kInside ? profile::State::Inside : profile::State::Outside;
        bool header = false;
        size_t i = 0;
        for (; (i = NextStep(ln.text, i, st, q_)) != npos && st != profile::State::Found; ++i) {
            if (st == profile::State::Inside) {
                header = true;
            } else if (!changed_) { // the first occurrence ends without the key
                changed_ = true;
                if (!c_.value) continue;
                if (header) return false; // the key would land before the header
                PutKey();
                st_ = kDone;
                break;
            }
        }
        if (st == profile::State::Found) {
            changed_ = true;
            if (held_.n) PutHeld();
            if (!c_.value) return st_ = kInside, true; // the line goes
            out_.Put(ln.text.substr(0, i + 1));
            out_.Put(c_.value);
            out_.Put(kCRLF);
            return st_ = kDone, true;
        }
        if (st_ != kDone) st_ = st == profile::State::Inside ? kInside : kOutside;
        Emit(p, ln);
        return true;
    }

    // The section writer's rules over a line starting with "[" (outside) or
    // holding one (inside): the header gets the text after it; the line with
    // the "[" that ends the old section stays.
    bool SectionRules(const Line &ln, const char *p) {
        if (ln.text.empty()) return Take(p, ln), true;
        size_t j = st_ == kInside ? npos : HeaderEnd(ln.text, 1, c_.section);
        Emit(p, ln);
        if (st_ == kInside) {
            st_ = kDone;
        } else if (j != npos && ln.text.find('[', j + 1) != npos) {
            if (c_.value) return false; // the text would never be read
            st_ = kDone;
        } else if (j != npos) {
            if (c_.value) {
                out_.Put(c_.value);
                out_.Put(kCRLF);
            }
            st_ = kInside;
        }
        return true;
    }

    // What the end of the data adds when the change is not made yet.
    void EndRules() {
        bool made = c_.key ? changed_ || st_ == kDone : st_ == kInside || st_ == kDone;
        if (made) return;
        if (c_.value) {
            if (st_ == kOutside) out_.Put(kCRLF);
            if (st_ != kInside) {
                out_.Put("[");
                out_.Put(c_.section);
                out_.Put("]\r\n");
            }
            if (c_.key) {
                PutKey();
            } else {
                out_.Put(c_.value);
                out_.Put(kCRLF);
            }
        }
        if (held_.n) PutHeld();
    }

    const Change &c_;
    const Query q_;
    const char *begin_, *end_;
    Output &out_;
    State st_;
    bool changed_ = false;
    Held held_;
    std::string scratch_;
};

// The common road of both writers: see profile.h for the results.
int32_t WriteProfile(const Change &c, const char *file) {
    if (!file || !ReadableBack(c)) return 0;
    char path[kUnixPathSize];
    MAC2UNIX(file, path);
    if (std::strlen(path) >= kUnixPathSize - 1) return 0;
    Replacement target;
    Replacement::Opened opened = target.Open(path);
    if (opened != Replacement::kOpened) return opened == Replacement::kUnreadable ? 1 : 0;
    int32_t out = MFil_Open("", kStage, 0);
    if (out < 0) return 1;
    int32_t in = LoadIntoMemoryFile(target.fd());
    bool ok = in >= 0 && target.Begin();
    if (ok) {
        Output o(target, out);
        ok = Writer(c, Contents(in), o).Run() && o.Finish() && target.Commit();
    }
    if (in >= 0) MFil_Close(in);
    MFil_Close(out);
    return ok ? 1 : 0;
}

} // namespace

extern "C" {

VITRAIL_API int32_t WritePrivateProfileString(const char *section, const char *key,
                                              const char *value, const char *file) {
    if (!section) return 0;
    return WriteProfile(Change{section, key, key ? value : nullptr}, file);
}

VITRAIL_API int32_t WritePrivateProfileSection(const char *section, const char *text,
                                               const char *file) {
    if (!section) return 0;
    return WriteProfile(Change{section, nullptr, text}, file);
}

} // extern "C"
