// Writing profile files: the old text is scanned line by line and copied to
// an output memory file with the change made, then the file is rewritten in
// place.
//
//   Writer state   Meaning
//   not started    nothing read yet (empty file)
//   outside        not in the wanted section
//   inside         after the wanted section's header
//   key line       this line holds the wanted key (string writer)
//   header line    this line is the wanted header (section writer)
//   done           the change is made; the rest is copied
//
// Every line written ends with CR LF. Blank lines are held back and written
// just before the next line that is written; blank lines still held at the
// end of a changed section's file are dropped. Lines are kept whole,
// whatever their length.
#include <cstdint>
#include <cstring>
#include <string>

#include <vitrail/files.h>
#include <vitrail/profile.h>

#include "profile/load.h"

namespace {

using profile::kUnlimited;
constexpr size_t npos = std::string_view::npos;
constexpr std::string_view kCRLF = "\r\n";
constexpr int32_t kChunk = 16384;

enum class State { NotStarted, Outside, Inside, KeyLine, HeaderLine, Done };

// The output memory file, filled through a staging buffer.
class Output {
  public:
    explicit Output(int32_t handle) : h_(handle) {}
    void Put(std::string_view s) {
        stage_.append(s);
        if (stage_.size() >= 65536) Flush();
    }
    void Blanks(int32_t &pending) {
        for (; pending > 0; --pending) Put(kCRLF);
    }
    // False once a write to the memory file came back short.
    bool Flush() {
        if (ok_ && !stage_.empty())
            ok_ = MFil_Write(h_, stage_.data(), int32_t(stage_.size())) == int32_t(stage_.size());
        stage_.clear();
        return ok_;
    }

  private:
    int32_t h_;
    std::string stage_;
    bool ok_ = true;
};

// The change one writer makes, line by line and at the end of the data.
struct Change {
    std::string_view section;
    const char *key;   // null: the section writer
    const char *value; // key's value, or the section's text; null deletes
};

// The "[" section "]" header line with its CR LF.
void PutHeader(Output &out, std::string_view section) {
    out.Put("[");
    out.Put(section);
    out.Put("]\r\n");
}

void PutKey(Output &out, const Change &c) {
    out.Put(c.key);
    out.Put("=");
    out.Put(c.value);
    out.Put(kCRLF);
}

// Writes one non-empty line of the string writer.
void KeyRules(std::string_view line, State &st, int32_t &pending, const Change &c, Output &out) {
    size_t i = 0, value = npos;
    if (st == State::Outside && line[0] == '[') {
        size_t j = profile::HeaderEnd(line, 1, c.section, kUnlimited);
        if (j != npos) st = State::Inside, i = j + 1;
    }
    for (; st == State::Inside && (i = profile::FindEqualOrBracket(line, i)) != npos; ++i) {
        if (line[i] == '[') { // the section ends without the key: add it here
            if (c.value) PutKey(out, c);
            out.Blanks(pending);
            st = State::Done;
        } else if (profile::KeyBefore(line, i, c.key, kUnlimited)) {
            value = i + 1;
            st = State::KeyLine;
        }
    }
    out.Blanks(pending);
    if (st == State::KeyLine) {
        st = State::Done;
        if (!c.value) return;
        out.Put(line.substr(0, value));
        out.Put(c.value);
    } else {
        out.Put(line);
    }
    out.Put(kCRLF);
}

// Writes (or drops) one non-empty line of the section writer.
void SectionRules(std::string_view line, State &st, int32_t &pending, const Change &c,
                  Output &out) {
    size_t i = 0;
    if (st == State::Outside && line[0] == '[') {
        size_t j = profile::HeaderEnd(line, 1, c.section, kUnlimited);
        if (j != npos) st = State::HeaderLine, i = j + 1;
    }
    if ((st == State::HeaderLine || st == State::Inside) && line.find('[', i) != npos)
        st = State::Done;
    if (st == State::Inside) return; // the old section's lines go
    out.Blanks(pending);
    out.Put(line);
    out.Put(kCRLF);
    if (st == State::HeaderLine) {
        if (c.value) {
            out.Put(c.value);
            out.Put(kCRLF);
        }
        st = State::Inside;
    }
}

// What is added at the end of the data when the change is not made yet.
void EndRules(State st, int32_t &pending, const Change &c, Output &out) {
    if (st == State::Done || st == State::KeyLine || (!c.key && st == State::Inside)) return;
    if (c.value) {
        if (st == State::Outside) out.Put(kCRLF);
        if (st == State::NotStarted || st == State::Outside) PutHeader(out, c.section);
        if (c.key) {
            PutKey(out, c);
        } else {
            out.Put(c.value);
            out.Put(kCRLF);
        }
    }
    out.Blanks(pending);
}

// Copies `data` to `out` line by line with the change made.
void Transform(std::string_view data, const Change &c, Output &out) {
    State st = data.empty() ? State::NotStarted : State::Outside;
    int32_t pending = 0;
    std::string scratch;
    const char *p = data.data(), *end = p + data.size();
    while (p < end) {
        const char *cr = static_cast<const char *>(std::memchr(p, '\r', size_t(end - p)));
        std::string_view line = profile::CleanLine(p, cr ? cr : end, scratch);
        if (line.empty()) {
            if (cr) ++pending; // the empty line that the data ends on is not counted
        } else if (c.key) {
            KeyRules(line, st, pending, c, out);
        } else {
            SectionRules(line, st, pending, c, out);
        }
        if (!cr) break;
        p = cr + 1;
    }
    EndRules(st, pending, c, out);
}

// Copies the memory file `h` to the file, emptied first; false when it cannot be opened.
bool Rewrite(const char *file, int32_t h) {
    int32_t fd = xFile_Open(file, 0, 1);
    if (fd < 0) return false;
    std::string_view text = profile::Contents(h);
    for (size_t done = 0; done < text.size();) {
        size_t n = text.size() - done < size_t(kChunk) * 64 ? text.size() - done : kChunk * 64;
        int32_t w = xFile_Write(fd, text.data() + done, int32_t(n));
        if (w <= 0) break;
        done += size_t(w);
    }
    xFile_SetEOF(fd, xFile_GetPos(fd));
    xFile_Close(fd);
    return true;
}

// The common road of both writers; 1 done (or file left unread), 0 failure.
int32_t WriteProfile(const Change &c, const char *file) {
    if (c.section.data() == nullptr || !file) return 0;
    int32_t fd = xFile_Open(file, 1, 0);
    if (fd < 0) fd = xFile_Open(file, 0, 1);
    if (fd < 0) return 0;
    xFile_Close(fd);
    if ((fd = xFile_Open(file, 1, 0)) < 0) return 1;
    // The new text is about as long as the old: room for it from the start
    // spares the output block its growth copies.
    int32_t size = xFile_Size(fd);
    int32_t out = MFil_Open("", 1, size < INT32_MAX - 4096 ? size + 4096 : size);
    if (out < 0) {
        xFile_Close(fd);
        return 1;
    }
    int32_t in = profile::LoadIntoMemoryFile(fd);
    xFile_Close(fd);
    bool ok = in >= 0;
    if (ok) {
        Output o(out);
        Transform(profile::Contents(in), c, o);
        ok = o.Flush();
        MFil_Close(in);
    }
    ok = ok && Rewrite(file, out);
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
