// cvn_np_table_rows.h - spells out the rows of an exported C table from a
// constexpr rule.
//
// An exported table must be a plain C array, and a C array can only be
// initialised by a brace list, so the rows are written out here by the
// preprocessor: CVN_NP_ROWS(rule, tens, ones) is "rule(0), rule(1), ...,
// rule(n - 1)," with n = tens * 10 + ones (at most 199).  The rule itself is
// an ordinary constexpr function of the row index.
#ifndef CVN_NP_TABLE_ROWS_H
#define CVN_NP_TABLE_ROWS_H

#define CVN_NP_ROWS(rule, tens, ones) CVN_NP_TENS_##tens(rule) CVN_NP_ONES_##ones(rule, tens##0)

#define CVN_NP_TEN(r, b)                                                                           \
    r(b + 0), r(b + 1), r(b + 2), r(b + 3), r(b + 4), r(b + 5), r(b + 6), r(b + 7), r(b + 8),      \
        r(b + 9),

#define CVN_NP_TENS_0(r)
#define CVN_NP_TENS_1(r) CVN_NP_TEN(r, 0)
#define CVN_NP_TENS_2(r) CVN_NP_TENS_1(r) CVN_NP_TEN(r, 10)
#define CVN_NP_TENS_3(r) CVN_NP_TENS_2(r) CVN_NP_TEN(r, 20)
#define CVN_NP_TENS_4(r) CVN_NP_TENS_3(r) CVN_NP_TEN(r, 30)
#define CVN_NP_TENS_5(r) CVN_NP_TENS_4(r) CVN_NP_TEN(r, 40)
#define CVN_NP_TENS_6(r) CVN_NP_TENS_5(r) CVN_NP_TEN(r, 50)
#define CVN_NP_TENS_7(r) CVN_NP_TENS_6(r) CVN_NP_TEN(r, 60)
#define CVN_NP_TENS_8(r) CVN_NP_TENS_7(r) CVN_NP_TEN(r, 70)
#define CVN_NP_TENS_9(r) CVN_NP_TENS_8(r) CVN_NP_TEN(r, 80)
#define CVN_NP_TENS_10(r) CVN_NP_TENS_9(r) CVN_NP_TEN(r, 90)
#define CVN_NP_TENS_11(r) CVN_NP_TENS_10(r) CVN_NP_TEN(r, 100)
#define CVN_NP_TENS_12(r) CVN_NP_TENS_11(r) CVN_NP_TEN(r, 110)
#define CVN_NP_TENS_13(r) CVN_NP_TENS_12(r) CVN_NP_TEN(r, 120)
#define CVN_NP_TENS_14(r) CVN_NP_TENS_13(r) CVN_NP_TEN(r, 130)
#define CVN_NP_TENS_15(r) CVN_NP_TENS_14(r) CVN_NP_TEN(r, 140)
#define CVN_NP_TENS_16(r) CVN_NP_TENS_15(r) CVN_NP_TEN(r, 150)
#define CVN_NP_TENS_17(r) CVN_NP_TENS_16(r) CVN_NP_TEN(r, 160)
#define CVN_NP_TENS_18(r) CVN_NP_TENS_17(r) CVN_NP_TEN(r, 170)
#define CVN_NP_TENS_19(r) CVN_NP_TENS_18(r) CVN_NP_TEN(r, 180)

#define CVN_NP_ONES_0(r, b)
#define CVN_NP_ONES_1(r, b) r(b + 0),
#define CVN_NP_ONES_2(r, b) CVN_NP_ONES_1(r, b) r(b + 1),
#define CVN_NP_ONES_3(r, b) CVN_NP_ONES_2(r, b) r(b + 2),
#define CVN_NP_ONES_4(r, b) CVN_NP_ONES_3(r, b) r(b + 3),
#define CVN_NP_ONES_5(r, b) CVN_NP_ONES_4(r, b) r(b + 4),
#define CVN_NP_ONES_6(r, b) CVN_NP_ONES_5(r, b) r(b + 5),
#define CVN_NP_ONES_7(r, b) CVN_NP_ONES_6(r, b) r(b + 6),
#define CVN_NP_ONES_8(r, b) CVN_NP_ONES_7(r, b) r(b + 7),
#define CVN_NP_ONES_9(r, b) CVN_NP_ONES_8(r, b) r(b + 8),

#endif // CVN_NP_TABLE_ROWS_H
