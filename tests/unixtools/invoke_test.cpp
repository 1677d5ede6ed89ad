// The three invokers: output capture, text fed to standard input, line
// delivery with its 8192-character cap and early stop.
#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>
#include <vitrail/unixtools.h>

#include "helpers.h"

using namespace unixtools_test;

namespace {

std::vector<std::string> g_lines;
int32_t g_stopAfter = 0;

int32_t Collect(const char *line) {
    g_lines.emplace_back(line);
    return g_stopAfter > 0 && int32_t(g_lines.size()) >= g_stopAfter ? 1 : 0;
}

std::vector<std::string> Lines(const std::string &command, int32_t stopAfter = 0) {
    g_lines.clear();
    g_stopAfter = stopAfter;
    BSDInvokeToolPr(command.c_str(), Collect);
    return g_lines;
}

} // namespace

TEST(InvokeTool, CapturesTheStartOfTheOutputAndAnswersTheWaitStatus) {
    char buffer[8];
    std::memset(buffer, '#', sizeof buffer);
    // Output left unread is discarded (the command may die of the closed pipe).
    BSDInvokeTool("printf abcdefghijkl", buffer, 4);
    EXPECT_STREQ(buffer, "abc");
    EXPECT_EQ(buffer[4], '#');

    BSDInvokeTool("printf abc", buffer, 1);
    EXPECT_STREQ(buffer, "");
    std::strcpy(buffer, "keep");
    EXPECT_NE(BSDInvokeTool("printf abc", buffer, -5), -1);
    EXPECT_STREQ(buffer, "keep");
    EXPECT_NE(BSDInvokeTool("printf abc", nullptr, 8), -1);
    EXPECT_EQ(BSDInvokeTool("printf abc", buffer, 8), 0);
    EXPECT_STREQ(buffer, "abc");

    int status = BSDInvokeTool("exit 3", nullptr, 0);
    EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 3) << status;
    EXPECT_EQ(BSDInvokeTool(nullptr, buffer, 8), -1);
}

TEST(InvokeToolWr, WritesTheTextWithoutALineEnd) {
    Scratch scratch;
    std::string out = scratch.path("out.txt");
    EXPECT_EQ(BSDInvokeToolWr(("cat > '" + out + "'").c_str(), "secret"), 0);
    EXPECT_EQ(scratch.read(out), "secret");
    EXPECT_EQ(BSDInvokeToolWr(("cat > '" + out + "'").c_str(), nullptr), 0);
    EXPECT_EQ(scratch.read(out), "");
    EXPECT_EQ(BSDInvokeToolWr(nullptr, "x"), -1);

    // A command that reads nothing: the host survives the broken pipe.
    std::string big(1 << 20, 'z');
    int status = BSDInvokeToolWr("exit 0", big.c_str());
    EXPECT_TRUE(WIFEXITED(status)) << status;
}

TEST(InvokeToolPr, DeliversLines) {
    Scratch scratch;
    std::string longLine = std::string(8192, 'a') + std::string(1808, 'b');
    std::string file = scratch.touch("long.txt", longLine + "\nnext\n");
    const struct {
        std::string command;
        std::vector<std::string> lines;
    } rows[] = {
        {"printf 'a\\n\\nb'", {"a", "", "b"}},
        {"printf 'one\\n'", {"one"}},
        {"printf ''", {}},
        {"printf '\\n'", {""}},
        {"cat '" + file + "'", {std::string(8192, 'a'), "next"}},
    };
    for (const auto &r : rows) EXPECT_EQ(Lines(r.command), r.lines) << r.command;
    EXPECT_EQ(BSDInvokeToolPr(nullptr, Collect), -1);
    EXPECT_EQ(BSDInvokeToolPr("printf x", nullptr), -1);
}

TEST(InvokeToolPr, ANonZeroAnswerStopsAtOnce) {
    EXPECT_EQ(Lines("printf 'one\\ntwo\\nthree\\n'", 1), std::vector<std::string>{"one"});
    // `yes` never ends by itself: only the stop ends the reading.
    EXPECT_EQ(Lines("yes", 3), (std::vector<std::string>{"y", "y", "y"}));
}
