// Plain models of the profile rules, byte by byte, for differential checks
// (the profile tests and the profile fuzz targets): what the reader finds
// and what the writers make of a whole file.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace profile_model {

constexpr size_t kKept = 1023;

inline std::string_view Kept(std::string_view s, size_t from, size_t to) {
    to = to < kKept ? to : kKept;
    return from < to ? s.substr(from, to - from) : std::string_view();
}

// The value of `key` in `section`, cut to size - 1 bytes; nullopt for the
// default.
inline std::optional<std::string> Read(std::string_view data, std::string_view section,
                                       std::string_view key, size_t size) {
    enum { kOut, kIn, kFound } st = kOut;
    std::string line, value;
    for (size_t k = 0; k <= data.size(); ++k) {
        char c = k < data.size() ? data[k] : '\r';
        if (c == '\n') continue;
        if (c == '\r' && st == kFound)
            return k < data.size() || !value.empty() ? std::optional(value) : std::nullopt;
        if (c == '\r') {
            line.clear();
        } else if (st == kFound) {
            if (value.size() < size - 1) value += c;
        } else if (st == kIn && c == '=' && Kept(line, 0, line.size()) == key) {
            st = kFound;
        } else {
            if (st == kOut && c == ']' && line[0] == '[' && Kept(line, 1, line.size()) == section)
                st = kIn;
            else if (st == kIn && c == '[')
                st = kOut;
            line += c;
        }
    }
    return std::nullopt;
}

// The file the string writer (key non-null) or the section writer makes
// from `data`; nullopt when the change is refused.
inline std::optional<std::string> Write(std::string_view data, std::string_view section,
                                        const char *key, const char *value) {
    std::string_view v = value ? value : "", name = key ? key : "";
    bool lf = false; // a line feed that does not follow a carriage return
    for (size_t i = 0; i < v.size(); ++i) lf = lf || (v[i] == '\n' && (i == 0 || v[i - 1] != '\r'));
    if (value && (section.size() >= kKept || section.find_first_of("\r\n") != v.npos ||
                  (key ? name.size() > kKept || name.find_first_of("\r\n[") != v.npos ||
                             v.find_first_of("\r\n") != v.npos
                       : lf)))
        return std::nullopt;
    enum { kNotStarted, kOut, kIn, kHeader, kDone } st = data.empty() ? kNotStarted : kOut;
    std::string out, line;
    int pending = 0;
    bool changed = false;
    auto blanks = [&] {
        for (; pending > 0; --pending) out += "\r\n";
    };
    auto keyLine = std::string(key ? key : "") + "=" + (value ? value : "") + "\r\n";
    for (size_t k = 0; k <= data.size(); ++k) {
        char c = k < data.size() ? data[k] : '\r';
        if (c == '\n') continue;
        if (c != '\r') {
            line += c;
            continue;
        }
        if (line.empty()) {
            pending += k < data.size();
            continue;
        }
        size_t found = std::string::npos;
        bool header = false;
        for (size_t i = 0; i < line.size() && st != kDone && found == std::string::npos; ++i) {
            char b = line[i];
            if (st == kOut && b == ']' && line[0] == '[' && Kept(line, 1, i) == section) {
                st = key ? kIn : kHeader, header = true;
            } else if (key && st == kIn && b == '=' && Kept(line, 0, i) == key) {
                found = i;
            } else if ((st == kIn || st == kHeader) && b == '[') {
                if (value && header) return std::nullopt;
                if (key && value) out += keyLine;
                st = (!key || value) ? kDone : kOut, changed = true;
            }
        }
        if (!key && st == kIn) { // a line of the replaced section
            line.clear();
            continue;
        }
        blanks();
        if (found != std::string::npos) {
            if (value) out += line.substr(0, found + 1) + value + "\r\n";
            st = value ? kDone : kIn, changed = true;
        } else if (st == kHeader) {
            out += line + "\r\n" + (value ? std::string(value) + "\r\n" : "");
            st = kIn;
        } else {
            out += line + "\r\n";
        }
        line.clear();
    }
    if (changed || st == kDone || (!key && st == kIn)) return out;
    if (value) {
        if (st == kOut) out += "\r\n";
        if (st != kIn) out += "[" + std::string(section) + "]\r\n";
        out += key ? keyLine : std::string(value) + "\r\n";
    }
    blanks();
    return out;
}

} // namespace profile_model
