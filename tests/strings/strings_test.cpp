// String helpers: tables of facts and std::string models around the edges
// of short texts. Insertion, deletion, item splitting and chained-list
// cutting over arbitrary texts are checked by the strings fuzz target.
#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>
#include <string>

#include <vitrail/strings.h>

#include "platform/toolbox/charsets.h"
#include "support/temp_volumes.h"

namespace {

using namespace std::string_literals;

// The bytes of `buf` up to and including the first two consecutive zeros.
std::string Bytes(const char *buf) {
    size_t i = 1;
    while (buf[i] || buf[i - 1]) ++i;
    return std::string(buf, i + 1);
}

// Mac OS Roman capitals, marks dropped, at every chunk edge of strupr's
// 255-byte work area, never past the terminator. The text: é É è ê ë à ç ö
// ÿ ı æ ø œ, then ß ﬁ ﬂ ƒ µ π € ° which stay.
TEST(Case, Capitals) {
    const std::string text = "abz\x8E\x83\x8F\x90\x91\x88\x8D\x9A\xD8\xF5\xBE\xBF\xCF"
                             "\xA7\xDE\xDF\xC4\xB5\xB9\xDB\xA1",
                      caps = "ABZEEEEEACOYI\xAE\xAF\xCE\xA7\xDE\xDF\xC4\xB5\xB9\xDB\xA1";
    for (size_t len : {0, 1, 254, 255, 256, 509, 510, 511, 765}) {
        std::string buf, want;
        for (size_t i = 0; i < len; ++i) buf += text[i % 24], want += caps[i % 24];
        buf += "\0guard"s, want += "\0guard"s;
        EXPECT_EQ(strupr(buf.data()), buf.data());
        EXPECT_EQ(buf, want) << len;
    }
    EXPECT_EQ(strupr(nullptr), nullptr);
}

// Each converted byte stands for the same character on both sides; every
// other byte is left alone (so ê and ï don't come back from Mac OS Roman).
TEST(Charset, EveryByte) {
    using namespace platform;
    const auto &macU = kMacRomanToUnicode, &winU = kWindows1252ToUnicode;
    const std::string w2m = "\xB0\xE0\xE7\xE8\xE9\xEA\xEF", m2w = "\x88\x8D\x8E\x8F\xA1";
    std::string mac, win;
    for (int b = 1; b < 256; ++b) mac += char(b);
    win = mac + "\x8E", mac += "\xE9"; // ending on a converted byte
    w2mstr(mac.data()), m2wstr(win.data()), w2mstr(nullptr), m2wstr(nullptr);
    EXPECT_TRUE(mac.back() == mac[0xE8] && win.back() == win[0x8D]);
    for (int b = 1; b < 256; ++b) {
        uint8_t m = mac[b - 1], w = win[b - 1], back = 0; // Mac OS Roman is one-to-one
        EXPECT_TRUE(w2m.find(char(b)) == w2m.npos ? m == b : macU[m] == winU[b]) << b;
        EXPECT_TRUE(m2w.find(char(b)) == m2w.npos ? w == b : winU[w] == macU[b]) << b;
        EXPECT_TRUE(UnicodeToMacRoman(macU[b], &back) && back == b) << b;
    }
}

// Trimming, searching and comparing against std::string models.
TEST(Ch, TrimSearchCompareInsert) {
    const std::string texts[] = {"", " ", "  ab  ", "abc", "00120", "h\xE9llo", "hello", "lo"};
    char buf[16];
    for (const std::string &s : texts) {
        for (char c : {' ', '0', '\0'}) {
            std::string end = s, start = s;
            if (c) end.erase(end.find_last_not_of(c) + 1), start.erase(0, s.find_first_not_of(c));
            EXPECT_EQ(chelicar_f(std::strcpy(buf, s.c_str()), c), int32_t(end.size())) << s;
            EXPECT_EQ(buf, end);
            EXPECT_EQ(chelicar_d(std::strcpy(buf, s.c_str()), c), int32_t(start.size())) << s;
            EXPECT_EQ(buf, start);
        }
        for (const std::string &p : texts) {
            const size_t at = s.empty() ? std::string::npos : s.find(p);
            size_t i = 0; // chcomp reads bytes as signed: 0xE9 is -23
            while (i < s.size() && s[i] == p[i]) ++i;
            EXPECT_EQ(chcher(p.c_str(), s.c_str()), int32_t(at)) << s << p; // npos is -1
            EXPECT_EQ(chcomp(s.c_str(), p.c_str()), int32_t(int8_t(s[i])) - int8_t(p[i])) << s << p;
        }
        EXPECT_EQ(chcher_c('l', s.c_str()), int32_t(s.find('l'))) << s;
    }
    EXPECT_EQ(chelibl_f(std::strcpy(buf, " x ")) + chelibl_d(buf), 3);
    EXPECT_STREQ(buf, "x");
    EXPECT_EQ(chelibl_f(nullptr) + chcher_c('a', nullptr) + chcher_c('\0', "a"), -2);
    // The text inserted may lie in the destination's own buffer: before or
    // across the gap, or past the terminator.
    // clang-format off
    const struct { std::string buf; int32_t from, pos; const char *out; } rows[] = {
        {"abc", 0, 0, "abcabc"}, {"abcabc", 1, 2, "abbcabccabc"}, {"ab\0XY"s, 3, 0, "XYab"},
        {"ab\0XY"s, 3, 9, "abXY"}, {"abc\0Z"s, 4, 1, "aZbc"}, {"abcd", 2, 1, "acdbcd"}};
    // clang-format on
    for (const auto &r : rows) {
        char dst[16] = {};
        std::memcpy(dst, r.buf.data(), r.buf.size());
        EXPECT_EQ(chinsch(dst, 16, dst + r.from, r.pos), int32_t(std::strlen(dst + r.from)));
        EXPECT_STREQ(dst, r.out) << r.buf << " from " << r.from;
    }
    chdelch(nullptr, 1, 0);
    EXPECT_EQ(chinsch_c(nullptr, 8, 'x', 0) + chinsch(nullptr, 8, "x", 0), 0);
}

// Calls on "#"-filled buffers holding `start`, at the exact size and one
// byte short: the result and the bytes from the start.
TEST(Sz, Copy) {
    // clang-format off
    const struct { int32_t (*fn)(char *, uint32_t, const char *, uint32_t); const char *start;
                   uint32_t size, n; int32_t result; std::string bytes; } rows[] = {
        {szcopy, "", 3, 5, 0, "ABC#"},            {szcopy_overlap, "", 3, 5, 0, "ABC#"},
        {szcopy, "", 5, 5, 1, "ABCDE#"},          {szcopy, "ab", 0, 0, 1, "ab\0#"s},
        {szcopy_0t, "", 5, 5, 0, "ABCD\0#"s},     {szcopy_0t, "", 6, 5, 1, "ABCDE\0#"s},
        {szcopy_0t, "z", 0, 5, 0, "z\0#"s},       {szcopy_0t, "z", 8, 0, 1, "\0\0#"s},
        {szconcat_0t, "ab", 5, 3, 0, "abAB\0#"s}, {szconcat_0t, "ab", 6, 3, 1, "abABC\0#"s},
        {szconcat_0t, "ab", 3, 3, 0, "ab\0#"s},   {szconcat_0t, "aaaaaaa", 5, 3, 0, "aaaa\0aa\0#"s},
        {nullptr, " 1  ", 0, 4, 1, "0100\0#"s}}; // szcnum
    // clang-format on
    for (const auto &r : rows) {
        char dst[16];
        std::strcpy(static_cast<char *>(std::memset(dst, '#', 16)), r.start);
        const int32_t result = r.fn ? r.fn(dst, r.size, "ABCDE", r.n) : szcnum(dst, r.n);
        EXPECT_EQ(result, r.result) << r.start << " " << r.size;
        EXPECT_EQ(std::string(dst, r.bytes.size()), r.bytes) << r.start << " " << r.size;
    }
    char up[] = "ABCDEF", down[] = "ABCDEF";
    EXPECT_EQ(szcopy_overlap(up + 2, 4, up, 4) + szcopy_overlap(down, 4, down + 2, 4), 2);
    EXPECT_EQ(up + " "s + down, "ABABCD CDEFEF");
}

// szcomp, szcompex, szcompex2 and szincl: "?" matches any byte, a trailing
// "*" any rest.
TEST(Sz, Compare) {
    // clang-format off
    const struct { std::string a, b; const char *want; } rows[] = {{"ABC", "ABC", "1111"},
        {"AB", "ABC", "0001"}, {"A?C", "ABC", "0110"}, {"ABC", "A?C", "0110"},
        {"ABD", "ABC", "0000"}, {"AB*", "ABXYZ", "0010"}, {"AB*", "AB", "0010"},
        {"AB*", "A", "0000"}, {"AB*", "AC", "0000"}, {"AB", "AB*", "0011"},
        {"ABXYZ", "AC*", "0000"}, {"A?*", "AQRS", "0010"}, {"AB*", "ABC*", "0010"},
        {"", "", "1111"}, {"", "A", "0001"}, {"A", "", "0000"}, {"*", "", "0010"},
        {"", "*", "0011"}, {"BC", "ABC", "0001"}, {"CD", "ABC", "0000"}, {"A\0C"s, "A\0C"s, "1111"},
        {"A\0C"s, "A\0D"s, "0000"}};
    // clang-format on
    for (const auto &r : rows) {
        std::string got;
        for (auto fn : {szcomp, szcompex, szcompex2, szincl})
            got +=
                char('0' + fn(r.a.data(), uint32_t(r.a.size()), r.b.data(), uint32_t(r.b.size())));
        EXPECT_EQ(got, r.want) << r.a << "|" << r.b;
    }
}

// Steps that fit exactly, grow to 2 x (12 + 8), replace the buffer at
// offset 0, grow from its end; then refusals that change nothing.
TEST(Sz, GrowableBuffer) {
    char *buf = nullptr;
    uint32_t cap = 0;
    std::string model;
    // clang-format off
    const struct { uint32_t offset; std::string src; uint32_t cap; } steps[] = {{0, "", 0},
        {0, "0123456789AB", 12}, {8, "wxyz", 12}, {10, "ABCDEFGH", 40},
        {0, std::string(41, 'q'), 41}, {41, "!", 84}};
    // clang-format on
    for (const auto &s : steps) {
        model = model.substr(0, s.offset) + s.src;
        EXPECT_EQ(szcopyex(&buf, &cap, s.offset, s.src.data(), uint32_t(s.src.size())), 1);
        EXPECT_EQ(cap, s.cap);
        EXPECT_EQ(std::string(buf ? buf : "", model.size()), model);
    }
    char *before = buf;
    EXPECT_EQ(szcopyex(&buf, &cap, 85, "x", 1) + szcopyex(&buf, &cap, 84, nullptr, 1) +
                  szcopyex(&buf, &cap, 1, "x", UINT32_MAX) + szcopyex(nullptr, &cap, 0, "x", 1),
              0);
    EXPECT_TRUE(buf == before && cap == 84u && buf[41] == '!');
    std::free(buf);
}

// Items lie between "," "-" and "+", taken exactly; rows: the list and its
// length (-2: the string's), the item and its length, found.
TEST(ItemLists, FindAndExtract) {
    // clang-format off
    const struct { std::string list; int32_t len; const char *item; int32_t n, found; } rows[] = {
        {"12,15+20", -2, "1", 1, 0},  {"12,15+20", -2, "20", 2, 1},  {"AB, CD", -2, "CD", 2, 0},
        {"ab", -2, "AB", 2, 0},       {"12,15", -2, "15xyz", 2, 1},  {"a,b", -2, "", 0, 0},
        {"a,,b", -2, "a", -1, 0},     {"a?c", -2, "abc", 3, 0},      {"A,B", 1, "B", 1, 0},
        {"A,B", 1, "A", 1, 1},        {"A\0B,C"s, 5, "A\0B", 3, 1},  {"A,B", 0, "", 0, 1},
        {"A,B", -1, "", 0, 0},        {"AB", 1, "A", 1, 1}};
    // clang-format on
    for (const auto &r : rows) {
        const int32_t len = r.len == -2 ? int32_t(r.list.size()) : r.len;
        EXPECT_EQ(Teste_item_szliste(r.list.data(), len, r.item, r.n), r.found) << r.list << len;
    }
    EXPECT_EQ(Get_item_liste(("p," + std::string(64, 'x')).c_str(), 1), std::string(63, 'x'));
    EXPECT_EQ(Get_item_liste("one,two", 0), Get_item_liste("one,two", 1)); // overwritten each call
    EXPECT_TRUE(!Get_item_liste("a,b", -1) && !Get_item_liste("a,b", 2) &&
                Teste_liste(nullptr) == 1);
}

// Closing a string in buffers of every size around it; binding, walking,
// deleting items and removing those whose file is missing.
TEST(ChainedLists, BuildWalkDelete) {
    const std::string closed[] = {"abc\0zzzz\0\0"s, "\0bc\0zzzz\0\0"s, "\0\0"s,   "a\0\0"s,
                                  "ab\0\0"s,        "abc\0\0"s,        "abc\0\0"s};
    for (int32_t size = 0; size <= 6; ++size) {
        char buf[12] = {'a', 'b', 'c', 0, 'z', 'z', 'z', 'z'};
        ChCh_Put_00(buf, size);
        EXPECT_EQ(Bytes(buf), closed[size]) << size;
    }
    char list[] = "x;y;z\0\0a\0bc\0\0";
    ChCh_Cut_sep(list, ';'), ChCh_Bind_sep(list, '|'), ChCh_Put_00(nullptr, 4);
    EXPECT_EQ(Bytes(list), "x|y|z\0\0"s);
    char *first = list + 7, *second = ChCh_Get_Next_Item(first);
    EXPECT_TRUE(second == first + 2 && !ChCh_Is_00(first) && ChCh_Is_00(second));
    EXPECT_EQ(ChCh_Get_Next_Item(second), second);
    for (const std::string &left : {"bc\0\0"s, "\0\0"s, "\0\0"s}) {
        ChCh_Delete_Item(first);
        EXPECT_EQ(Bytes(first), left);
    }
    EXPECT_EQ(ChCh_Count_Item(first) + ChCh_Count_Item(nullptr), 1);
    // Items tested as files of a folder: where the first missing one is (-1:
    // none), how many are removed, what is kept.
    vitrail_test::TempVolumes vols;
    for (const char *f : {"f2", "f4", "sub/f"}) vols.write("Disque/Dossier/"s + f, "x");
    // clang-format off
    const struct { std::string list; int32_t missing, removed; std::string kept; } rows[] = {
        {"f2\0f1\0f3\0f4\0\0"s, 3, 2, "f2\0f4\0\0"s}, {"f2\0sub\0\0"s, 3, 1, "f2\0\0"s},
        {"f1\0f3\0\0"s, 0, 2, "\0\0"s}, {"f2\0f4\0\0"s, -1, 0, "f2\0f4\0\0"s},
        {"\0\0"s, 0, 0, "\0\0"s}};
    // clang-format on
    for (const auto &r : rows) {
        std::string buf = r.list;
        char *item = nullptr;
        EXPECT_EQ(ChCh_Detect_Missing_File("Disque:Dossier", buf.data(), &item), r.missing >= 0);
        EXPECT_EQ(item, r.missing >= 0 ? buf.data() + r.missing : nullptr);
        EXPECT_EQ(ChCh_Remove_Missing_File("Disque:Dossier", buf.data()), r.removed);
        EXPECT_EQ(Bytes(buf.data()), r.kept);
    }
}

} // namespace
