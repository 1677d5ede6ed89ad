// Number readers and writers against the C library: realcod_d must equal
// strtod on the text it accepted (left trimmed, "," read as ".", a "0"
// before the digits), intcod_l
// must equal strtoll, and what the writers produce must read back exactly.
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

#include <vitrail/numdate.h>

#include "check.h"

namespace {

bool Same(double a, double b) {
    return std::memcmp(&a, &b, sizeof a) == 0;
}

void CheckReal(const std::string &input) {
    std::string text = input;
    double value = 0;
    if (realcod_d(text.data(), &value) != 0) return;
    std::string model = text.c_str();                      // trimmed in place by the reader
    model.insert(model[0] == '+' || model[0] == '-', "0"); // "-.", "e5": strtod wants a digit
    for (char &c : model)
        if (c == ',') c = '.';
    CHECK(Same(value, std::strtod(model.c_str(), nullptr)));
    char out[64]; // 17 digits hold the shortest text of any double: it reads back
    if (std::isfinite(value) && realdco_sd(value, out, sizeof out, 17) == 0) {
        double back = 0;
        CHECK(realcod_d(out, &back) == 0 && back == value); // -0.0 is written "0"
    }
    if (std::fabs(value) < 1e15 && realdco_d(value, out, sizeof out, 3) < 2)
        CHECK(std::fabs(std::strtod(out, nullptr) - value) <= 0.0005 + std::fabs(value) * 1e-15);
}

void CheckInteger(const std::string &input) {
    std::string text = input;
    int32_t value = 0;
    const int32_t code = intcod_l(text.data(), &value);
    const char *digits = text.c_str() + (text[0] == '+' || text[0] == '-');
    const size_t span = std::strspn(digits, "0123456789");
    if (code == 0) CHECK(std::strtoll(text.c_str(), nullptr, 10) == value);
    if (code == 4) CHECK(span == std::strlen(digits) && span > 0);
    if (span == std::strlen(digits) && span > 0 && span < 18) {
        const long long exact = std::strtoll(text.c_str(), nullptr, 10);
        CHECK((code == 0) == (std::llabs(exact) <= INT32_MAX));
    }
    char mine[12], libc[16];
    std::snprintf(libc, sizeof libc, "%d", value);
    for (int32_t size = 0; size <= 12; ++size) {
        const int32_t r = intdco_l(value, mine, size);
        const bool fits = size > int32_t(std::strlen(libc));
        CHECK(r == (fits ? (size < 12 ? 1 : 0) : 2));
        if (fits) CHECK(std::strcmp(mine, libc) == 0);
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    const std::string input(reinterpret_cast<const char *>(data),
                            strnlen((const char *)data, size));
    CheckReal(input);
    CheckInteger(input);
    return 0;
}
