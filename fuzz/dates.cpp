// Date arithmetic and conversions against a day-count model: moving n days
// forward then back (and the reverse) returns the date, each day moves the
// week day by one, and the stored and displayed forms convert both ways.
#include <cstring>
#include <string>

#include <vitrail/numdate.h>

#include "check.h"

namespace {

template <class T>
T Take(const uint8_t *&data, size_t &size) {
    T v{};
    const size_t n = size < sizeof v ? size : sizeof v;
    std::memcpy(&v, data, n);
    data += n, size -= n;
    return v;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    const int32_t year = 1 + Take<uint16_t>(data, size) % 9000;
    const int32_t month = 1 + Take<uint8_t>(data, size) % 12;
    const int32_t day = 1 + Take<uint8_t>(data, size) % utdatedm(year, month);
    const uint32_t n = Take<uint32_t>(data, size) % 400000;
    const int32_t date = year * 10000 + month * 100 + day;
    CHECK(Validate_Date(date) == (year >= 1800 && year <= 2100));
    const int32_t later = Get_Date_Incr(date, n), earlier = Get_Date_Diff(date, n);
    if (later != 0) {
        CHECK(Get_Date_Diff(later, n) == date);
        const int32_t ly = later / 10000, lm = later / 100 % 100;
        CHECK(utdatedw(ly, lm, later % 100) == (utdatedw(year, month, day) + n) % 7);
    }
    if (earlier != 0) CHECK(Get_Date_Incr(earlier, n) == date);
    char stored[16], shown[20], back[16];
    LongToNUM(date, stored, 8);
    stored[8] = '\0';
    Qar_Inv_Date(stored, shown);
    Qar_Build_Date(shown, back);
    CHECK(std::strcmp(back, stored) == 0);
    // Any bytes at all: the conversions stay inside their forms.
    const std::string text(reinterpret_cast<const char *>(data), strnlen((const char *)data, size));
    CHECK(std::strlen(Qar_Inv_Date_Time(text.c_str(), shown)) == 19);
    Qar_Build_Date_slong(text.c_str(), text.c_str(), back);
    CHECK(std::strlen(back) == 14);
    Qar_Reduc_Date(text.c_str(), back);
    CHECK(std::strlen(back) <= 8);
    double d = 0;
    int32_t v = 0;
    NUMDToDouble(text.c_str(), int32_t(text.size()), &d);
    NUMPInterToLong(text.c_str(), int32_t(text.size()), &v, &v);
    Teste_NUM_liste(text.c_str());
    return 0;
}
