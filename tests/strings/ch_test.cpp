// Zero-terminated helpers against std::string models, over every position,
// count and buffer size around the edges of short texts; then insertion
// from the destination's own buffer.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <string>

#include <vitrail/strings.h>

namespace {

using namespace std::string_literals;
const std::string kTexts[] = {"", " ", "  ab  ", "abc", "00120", "\tab\t", "h\xE9llo", "lo"};

TEST(Ch, TrimCompareSearch) {
    char buf[16];
    for (const std::string &s : kTexts) {
        for (char c : {' ', '0', '\0'}) {
            std::string end = s, start = s;
            if (c)
                end.erase(end.find_last_not_of(c) + 1), start.erase(0, start.find_first_not_of(c));
            EXPECT_EQ(chelicar_f(std::strcpy(buf, s.c_str()), c), int32_t(end.size())) << s;
            EXPECT_EQ(buf, end);
            EXPECT_EQ(chelicar_d(std::strcpy(buf, s.c_str()), c), int32_t(start.size())) << s;
            EXPECT_EQ(buf, start);
        }
        for (const std::string &p : kTexts) {
            const size_t at = s.empty() ? std::string::npos : s.find(p);
            EXPECT_EQ(chcher(p.c_str(), s.c_str()), at == std::string::npos ? -1 : int32_t(at));
            size_t i = 0;
            while (i < s.size() && s[i] == p[i]) ++i; // signed bytes: 0xE9 is -23
            EXPECT_EQ(chcomp(s.c_str(), p.c_str()), int32_t(int8_t(s[i])) - int8_t(p[i])) << s << p;
        }
        for (char c : {'l', 'b', '\0'}) {
            const size_t at = c ? s.find(c) : std::string::npos;
            EXPECT_EQ(chcher_c(c, s.c_str()), at == std::string::npos ? -1 : int32_t(at));
        }
    }
    EXPECT_EQ(chelibl_f(std::strcpy(buf, " x ")) + chelibl_d(buf), 3);
    EXPECT_STREQ(buf, "x");
    EXPECT_EQ(chelibl_f(nullptr) + chcher_c('a', nullptr), -1);
}

TEST(Ch, DeleteAndInsert) {
    for (const std::string &s : kTexts) {
        const int32_t len = int32_t(s.size());
        for (int32_t pos : {INT32_MIN, -1, 0, 1, len - 1, len, len + 5}) {
            const size_t at = size_t(std::clamp(pos, 0, std::max(len - 1, 0)));
            for (int32_t count : {-1, 0, 1, 2, len, len + 1, INT32_MAX}) {
                std::string want = s;
                if (len > 0 && count >= 1 && count <= len) want.erase(at, size_t(count));
                char buf[16];
                chdelch(std::strcpy(buf, s.c_str()), count, pos);
                EXPECT_EQ(buf, want) << s << " " << count << "@" << pos;
            }
            for (const std::string &ins : {""s, "X"s, "XY"s}) {
                for (int32_t size = -1; size <= len + 4; ++size) {
                    const bool fits = !ins.empty() && len + int32_t(ins.size()) <= size - 1;
                    std::string want = s;
                    if (fits) want.insert(size_t(std::clamp(pos, 0, len)), ins);
                    char buf[24];
                    std::memset(buf, '#', sizeof buf);
                    std::strcpy(buf, s.c_str());
                    const int32_t got = ins.size() == 1 ? chinsch_c(buf, size, 'X', pos)
                                                        : chinsch(buf, size, ins.c_str(), pos);
                    EXPECT_EQ(got, fits ? int32_t(ins.size()) : 0) << s << "+" << ins << size;
                    EXPECT_EQ(buf, want) << s << "+" << ins << " size " << size;
                    EXPECT_EQ(buf[std::max(size, len + 1)], '#') << "written past the buffer";
                }
            }
        }
    }
    EXPECT_EQ(chinsch_c(nullptr, 8, 'x', 0) + chinsch_c(std::string(8, 0).data(), 8, 0, 0), 0);
}

// The text inserted may lie in the destination's buffer: before or across
// the gap, or past the terminator.
TEST(Ch, InsertFromTheSameBuffer) {
    const struct {
        std::string buf;
        int32_t from, pos;
        const char *out;
    } rows[] = {{"abc", 0, 0, "abcabc"},   {"abcabc", 1, 2, "abbcabccabc"},
                {"ab\0XY"s, 3, 0, "XYab"}, {"ab\0XY"s, 3, 9, "abXY"},
                {"abc\0Z"s, 4, 1, "aZbc"}, {"abcd", 2, 1, "acdbcd"}};
    for (const auto &r : rows) {
        char buf[16] = {};
        std::memcpy(buf, r.buf.data(), r.buf.size());
        const auto n = int32_t(std::strlen(buf + r.from));
        EXPECT_EQ(chinsch(buf, 16, buf + r.from, r.pos), n);
        EXPECT_STREQ(buf, r.out) << r.buf << " from " << r.from;
    }
}

} // namespace
