// Ready-made field validators: the family's parser, then a rule on the
// parsed value. The parser stores the value first, so a value the rule
// refuses is stored all the same.
//
//   Validator         Parser      Refuses (result)
//   intcod_i_sup0     intcod_i    value < 0 (1)
//   intcod_i_ssup0    intcod_i    value <= 0 (1)
//   realcod_d_sup0    realcod_d   value < 0.0 (1); NaN passes
//   realcod_d_ssup0   realcod_d   value <= 0.0 (1); NaN passes
//   intcod_l_sup0     intcod_l    value < 0 (1)
//   intcod_l_date     intcod_l    value < 0 (1); not a date 18000101..21001231 (2)
// A parser's own failure code is returned unchanged.
#include <vitrail/form.h>
#include <vitrail/numdate.h>

namespace {

// Parses text into value, then returns rule(value) when the parse succeeded.
// A null text answers 1 (an empty text); a null value is parsed into a local.
template <class T, class Parser, class Rule>
int32_t parse_then(Parser parse, char *text, T *value, Rule rule) {
    if (!text) return 1;
    T local{};
    if (!value) value = &local;
    int32_t r = parse(text, value);
    return r != 0 ? r : rule(*value);
}

int32_t refuse_negative(int32_t v) {
    return v < 0 ? 1 : 0;
}

int32_t refuse_not_positive(int32_t v) {
    return v <= 0 ? 1 : 0;
}

// Date YYYYMMDD judged by its last eight digits: 1 when negative, 2 when the
// year is outside 1800..2100 or the month or day is not in the calendar.
int32_t refuse_not_date(int32_t v) {
    if (v < 0) return 1;
    int32_t day = v % 100, month = v / 100 % 100, year = v / 10000 % 10000;
    if (year < 1800 || year > 2100 || month < 1 || month > 12 || day < 1) return 2;
    return day > utdatedm(year, month) ? 2 : 0;
}

} // namespace

extern "C" {

VITRAIL_API int32_t intcod_i_sup0(char *text, int32_t *value) {
    return parse_then(intcod_i, text, value, refuse_negative);
}

VITRAIL_API int32_t intcod_i_ssup0(char *text, int32_t *value) {
    return parse_then(intcod_i, text, value, refuse_not_positive);
}

VITRAIL_API int32_t realcod_d_sup0(char *text, double *value) {
    return parse_then(realcod_d, text, value, [](double v) { return v < 0.0 ? 1 : 0; });
}

VITRAIL_API int32_t realcod_d_ssup0(char *text, double *value) {
    return parse_then(realcod_d, text, value, [](double v) { return v <= 0.0 ? 1 : 0; });
}

VITRAIL_API int32_t intcod_l_sup0(char *text, int32_t *value) {
    return parse_then(intcod_l, text, value, refuse_negative);
}

VITRAIL_API int32_t intcod_l_date(char *text, int32_t *value) {
    return parse_then(intcod_l, text, value, refuse_not_date);
}

} // extern "C"
