// Profile lookups: the skipping scan against the plain line-by-line rules on
// random profiles built from the bytes that steer the reader.
#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

#include "profile/lookup.h"

namespace {

// Pieces without "[" and pieces with one.
const std::vector<std::string> kPieces = {"\r",      "\n",
                                          "\r\n",    "]",
                                          "=",       "k",
                                          "ke",      "key",
                                          "S",       "x",
                                          "v",       " ",
                                          "\rkey=",  "\r\nkey=v",
                                          "\rke=",   "\r\nkex=",
                                          "\n\r",    "key=",
                                          "=key",    "\r\n\n",
                                          "\r\nkey", "vvvvvvvvvvvvvvvvvvvvvvvv"};
const std::vector<std::string> kBrackets = {"[", "[S]", "[S", "\r[S]\r\n", "y=[z]", "\r\n[S]"};
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

TEST(ProfileLookup, MatchesTheLineRules) {
    std::mt19937 rng(20261123);
    std::string longKey(1100, 'k');
    for (int round = 0; round < 3000; ++round) {
        std::string text = RandomProfile(rng, int(rng() % 300), 3u + rng() % 60);
        for (int q = 0; q < 12; ++q) {
            const std::string &section = kSections[rng() % kSections.size()];
            const std::string &key = q == 0 ? longKey : kKeys[rng() % kKeys.size()];
            int32_t size = int32_t(1 + rng() % 16);
            char fast[32], rules[32];
            std::fill(std::begin(fast), std::end(fast), '#');
            std::fill(std::begin(rules), std::end(rules), '#');
            int32_t a = profile::Lookup(text, section, key, fast, size);
            int32_t b = profile::LookupByRules(text, section, key, rules, size);
            ASSERT_EQ(a, b) << "round " << round << " section '" << section << "' key '" << key
                            << "'";
            ASSERT_EQ(std::string(fast, 32), std::string(rules, 32)) << "round " << round;
        }
    }
}

} // namespace
