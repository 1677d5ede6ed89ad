// Fixed-width numeric fields: numbers as "0"-padded decimal text of a fixed
// width with no terminator, and their percentage, interval and list forms.
//
//   Field        Example      Written by      Read by
//   NUM          "00042"      LongToNUM       NUMToLong (at most 11 bytes)
//   NUM, short   "00042"      IntToNUM        NUMToInt
//   percentage   "15 %"       -               NUMP100ToLong
//   interval     "[5, 10]"    -               NUMPInterToLong
//   NUMD         "0012.50"    DoubleToNUMD    NUMDToDouble (at most 19 bytes)
#include <vitrail/numdate.h>

#include <array>
#include <cstdint>
#include <cstring>

namespace {

// Right-aligns the terminated text in width bytes, "0" before it; 11 when
// the text is wider than the field.
int32_t right_align(const char *text, char *field, int32_t width) {
    const int32_t len = static_cast<int32_t>(std::strlen(text));
    if (!field || len > width) return 11;
    std::memset(field, '0', static_cast<size_t>(width - len));
    std::memcpy(field + (width - len), text, static_cast<size_t>(len));
    return 0;
}

using IntReader = int32_t (*)(char *, int32_t *);

// Copies at most 11 bytes into a terminated work area and reads them.
int32_t read_num(const char *field, int32_t len, int32_t *result, IntReader reader) {
    std::array<char, 12> work{};
    int32_t value = 0, code = 11;
    if (field && len >= 0 && len <= 11) {
        std::memcpy(work.data(), field, static_cast<size_t>(len));
        code = reader(work.data(), &value);
        if (code == 0 && value < 0) code = 12;
    }
    if (result) *result = code == 0 ? value : 0;
    return code;
}

int32_t skip_blanks_back(const char *f, int32_t begin, int32_t end) {
    while (end > begin && f[end - 1] == ' ') --end;
    return end;
}

int32_t skip_blanks_forward(const char *f, int32_t begin, int32_t end) {
    while (begin < end && f[begin] == ' ') ++begin;
    return begin;
}

// Drops a trailing "%" with the blanks around it from [0, len); tells
// whether there was one.
bool drop_percent(const char *f, int32_t &len) {
    int32_t end = skip_blanks_back(f, 0, len);
    if (end == 0 || f[end - 1] != '%') return false;
    len = skip_blanks_back(f, 0, end - 1);
    return true;
}

} // namespace

extern "C" {

VITRAIL_API int32_t LongToNUM(int32_t value, char *field, int32_t width) {
    std::array<char, 12> text{};
    if (int32_t code = intdco_l(value, text.data(), 12)) return code;
    return right_align(text.data(), field, width);
}

VITRAIL_API int32_t IntToNUM(int32_t value, char *field, int32_t width) {
    std::array<char, 12> text{};
    if (int32_t code = intdco_i(value, text.data(), 12)) return code;
    return right_align(text.data(), field, width);
}

VITRAIL_API int32_t NUMToLong(const char *field, int32_t len, int32_t *result) {
    return read_num(field, len, result, intcod_l);
}

VITRAIL_API int32_t NUMToInt(const char *field, int32_t len, int32_t *result) {
    return read_num(field, len, result, intcod_i);
}

VITRAIL_API int32_t NUMP100ToLong(const char *field, int32_t len, int32_t *result) {
    if (field && len > 0) {
        len = skip_blanks_back(field, 0, len);
        drop_percent(field, len);
    }
    return NUMToLong(field, len, result);
}

VITRAIL_API int32_t NUMPInterToLong(const char *field, int32_t len, int32_t *low, int32_t *high) {
    if (!field || len < 0) {
        if (low) *low = 0;
        if (high) *high = 0;
        return 22;
    }
    int32_t end = skip_blanks_back(field, 0, len);
    if (end > 0 && field[end - 1] == ']') --end;
    end = skip_blanks_back(field, 0, end);
    int32_t begin = skip_blanks_forward(field, 0, end);
    if (begin < end && field[begin] == '[') begin = skip_blanks_forward(field, begin + 1, end);
    int32_t sep = begin;
    while (sep < end && field[sep] != ',' && field[sep] != '-' && field[sep] != ';') ++sep;
    const int32_t low_end = skip_blanks_back(field, begin, sep);
    const int32_t code = NUMToLong(field + begin, low_end - begin, low);
    if (sep == end) return code + NUMToLong(field, -1, high);
    const int32_t high_begin = skip_blanks_forward(field, sep + 1, end);
    return code + NUMToLong(field + high_begin, end - high_begin, high);
}

VITRAIL_API int32_t DoubleToNUMD(double value, char *field, int32_t width, int32_t decimals) {
    std::array<char, 20> text{};
    if (realdco_d(value, text.data(), 20, decimals) == 2) return 2;
    return right_align(text.data(), field, width);
}

VITRAIL_API int32_t NUMDToDouble(const char *field, int32_t len, double *result) {
    std::array<char, 20> work{};
    double value = 0.0;
    int32_t code = 11;
    const bool percent = field && len > 0 && field[len - 1] == '%';
    if (percent) len = skip_blanks_back(field, 0, len - 1);
    if (field && len >= 0 && len <= 19) {
        std::memcpy(work.data(), field, static_cast<size_t>(len));
        code = realcod_d(work.data(), &value);
        if (code == 0 && value < 0.0) code = 12;
    }
    if (result) *result = code != 0 ? 0.0 : percent ? value / 100.0 : value;
    return code;
}

} // extern "C"
