// The reader and the writers against the byte-by-byte models, on random
// profiles built from the bytes that steer the rules.
#include <gtest/gtest.h>

#include <filesystem>
#include <random>
#include <string>
#include <unistd.h>
#include <vector>

#include <vitrail/profile.h>

#include "profile/lookup.h"
#include "profile/model.h"
#include "support/temp_volumes.h"

namespace {

// Every write is flushed to disk: the tests keep their profiles in memory.
const bool kInMemory = access("/dev/shm", W_OK) == 0 && setenv("TMPDIR", "/dev/shm", 1) == 0;

// Pieces without "[" and pieces with one.
const std::vector<std::string> kPieces = {
    "\r",   "\n",  "\r\n",     "]",     "=",        "k",     "ke",       "key",    "S",
    "x",    "v",   " ",        "\rkey=", "\r\nkey=v", "\rke=", "\r\nkex=", "\n\r",   "key=",
    "=key", "\r\n\n", "\r\nkey", "\r\n\r\n", "vvvvvvvvvvvvvvvvvvvvvvvv"};
const std::vector<std::string> kBrackets = {"[", "[S]", "[S", "\r[S]\r\n", "y=[z]", "\r\n[S]",
                                            "\r\n[S][\r\n"};
const std::vector<std::string> kSections = {"S", "", "S]", "s", "[S"};
const std::vector<std::string> kKeys = {"key", "k", "ke", "", "x", "key ", "=", "key=", "kk"};

// A profile of `pieces` random pieces, one in `sparse` of them holding a
// "[", with a long run now and then to pass the 1023 bytes kept of a line.
std::string RandomProfile(std::mt19937 &rng, int pieces, unsigned sparse) {
    std::string text;
    for (int i = 0; i < pieces; ++i) {
        if (rng() % 500 == 0) text.append(1000 + rng() % 100, "kv"[rng() % 2]);
        const auto &from = rng() % sparse == 0 ? kBrackets : kPieces;
        text += from[rng() % from.size()];
    }
    return text;
}

template <typename T> const T &Pick(std::mt19937 &rng, const std::vector<T> &v) {
    return v[rng() % v.size()];
}

TEST(ProfileModel, LookupsMatchTheReadingRules) {
    std::mt19937 rng(20261123);
    std::string longKey(1100, 'k');
    for (int round = 0; round < 3000; ++round) {
        std::string text = RandomProfile(rng, int(rng() % 300), 3u + rng() % 60);
        for (int q = 0; q < 12; ++q) {
            const std::string &section = Pick(rng, kSections);
            const std::string &key = q == 0 ? longKey : Pick(rng, kKeys);
            int32_t size = int32_t(1 + rng() % 16);
            char buf[32];
            std::fill(std::begin(buf), std::end(buf), '#');
            int32_t n = profile::Lookup(text, section, key.c_str(), buf, size);
            auto want = profile_model::Read(text, section, key, size_t(size));
            ASSERT_EQ(n, want ? int32_t(want->size()) : -1) << "round " << round << " " << key;
            std::string got = n >= 0 ? std::string(buf, size_t(n) + 1) : std::string(buf, 32);
            ASSERT_EQ(got, want ? *want + '\0' : std::string(32, '#')) << "round " << round;
        }
    }
}

TEST(ProfileModel, WritesMatchTheWritingRulesAndReadBack) {
    vitrail_test::TempVolumes vols;
    auto path = vols.volume("Vol") / "a.ini";
    const std::vector<const char *> values = {"v", "", nullptr, "a[b", "x\ry", "p=1\r\nq=2",
                                              "a\nb", "k=[\r\nkey=2"};
    std::mt19937 rng(7);
    for (int round = 0; round < 1500; ++round) {
        std::string text = RandomProfile(rng, int(rng() % 120), 3u + rng() % 30), crlf;
        for (char c : text) // every other profile with CR LF line ends only
            crlf += round % 2 ? c == '\r' ? "\r\n" : c == '\n' ? "" : std::string(1, c) : std::string(1, c);
        text = crlf;
        const std::string &section = Pick(rng, kSections);
        const char *key = rng() % 4 ? Pick(rng, kKeys).c_str() : nullptr;
        const char *value = Pick(rng, values);
        vols.write(path, text);
        int32_t r = key ? WritePrivateProfileString(section.c_str(), key, value, "Vol:a.ini")
                        : WritePrivateProfileSection(section.c_str(), value, "Vol:a.ini");
        auto want = profile_model::Write(text, section, key, value);
        ASSERT_EQ(r, want ? 1 : 0) << "round " << round;
        ASSERT_EQ(vols.read(path), want ? *want : text) << "round " << round;
        if (r && key) { // whatever was set reads back; whatever was deleted is gone
            char buf[64];
            int32_t n = GetPrivateProfileString(section.c_str(), key, "-", buf, 64, "Vol:a.ini");
            ASSERT_EQ(std::string(buf, size_t(n)), value ? value : "-") << "round " << round;
        }
    }
}

} // namespace
