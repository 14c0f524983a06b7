#pragma once

/// The functions of ours that statements written for SQLite call. The driver registers each of them on every
/// connection, deterministic but for zel_now. A function that fails reports the text "NUMBER|description"
/// (sqlite3_result_error), which the driver turns into Error(NUMBER, description). Unless a line says
/// otherwise, a NULL among the arguments gives NULL.
///
/// How values lie in the file: int, smallint, bigint, tinyint, bit as INTEGER; numeric, money as plain number
/// (INTEGER when whole, else the REAL nearest to the decimal); float as REAL; text as TEXT; a date as
/// 'YYYY-MM-DD', with ' HH:MM:SS.mmm' behind it only when there is a time of day. A char(n) is stored without
/// its trailing blanks. "number" below is an INTEGER or a REAL. A decimal result is INTEGER when whole, else
/// REAL. Decimal digits are rounded half away from zero on the shortest decimal text of the double (1.005 to
/// two digits is 1.01).
namespace zel::tsql::sqlite_names {

// Texts.

/// (text) -> text: trailing blanks cut, every character folded simply and without locale, one to one. No
/// character beyond ASCII folds into ASCII (the Kelvin sign and the long s stay themselves). Accents stay
/// distinct.
inline constexpr char Fold[] = "zel_fold";
/// (text) -> text: every text of the same zel_fold is, under NOCASE, at least the first and below the second.
/// The range lets an index find them.
inline constexpr char RangeBegin[] = "zel_rangebegin";
inline constexpr char RangeEnd[] = "zel_rangeend";
/// (text) -> the text, which a NOCASE column can be compared with as if both were folded; 446 for one that
/// has a letter beyond ASCII in another case.
inline constexpr char Code[] = "zel_code";
/// (value text, pattern text) -> 1 or 0: '%', '_', [abc], [a-c], [^a-c]; case ignored as zel_fold does; a '['
/// that is never closed matches nothing, a ']' alone is itself, '[]' matches nothing, "[x-]" matches nothing,
/// "[-x]" is '-' or 'x'. Matches when the value as it is or the value without its trailing blanks does.
/// Patterns of any length.
inline constexpr char Like[] = "zel_like";
/// (text, width) -> text padded with blanks to `width` characters; longer ones stay.
inline constexpr char Pad[] = "zel_pad";
/// (a, b) -> NULL where the texts are one to zel_fold, else a, also where b is NULL.
inline constexpr char NullIf[] = "zel_nullif";
/// (text, b, kind) -> the same where the text, converted to the type of kind TypeKind, is b; fails as the
/// conversion does.
inline constexpr char NullIfConverted[] = "zel_nullifas";
/// (text, search, by) -> text with every `search` replaced, case ignored as zel_fold does; an empty `search`
/// changes nothing.
inline constexpr char Replace[] = "zel_replace";
/// (text) -> text, letter by letter, beyond ASCII too; never changes the number of characters.
inline constexpr char Upper[] = "zel_upper";
inline constexpr char Lower[] = "zel_lower";
/// (text, count) -> the last / first `count` characters; a negative count is error 536 (Invalid length
/// parameter ...).
inline constexpr char Right[] = "zel_right";
inline constexpr char Left[] = "zel_left";
/// (text, start, count) -> characters start .. start+count-1 that exist, counted from 1; start may be 0 or
/// less and then eats from count; a negative count is error 537.
inline constexpr char Substring[] = "zel_substring";
/// (searched, text, start) -> place of `searched` from `start` on, counted from 1, case ignored; 0 when there
/// is none.
inline constexpr char CharIndex[] = "zel_charindex";

// Into a type.

/// (number or text, bits) -> INTEGER. bits: 1 (bit), 8 (tinyint, 0..255), 16, 32, 64. A fraction of a number
/// is cut. Text: blanks around, sign, digits; '' (or only blanks) is 0; anything else is 245 (for 64 bits
/// 8114): "Conversion failed when converting the varchar value 'abc' to data type int."; a text too large is
/// 248, a number too large 8115 (of 8 and 16 bits 244 and 220). Bits 1: any other number than 0 is 1; the
/// texts true and false in any case are 1 and 0.
inline constexpr char Int[] = "zel_int";
/// (number or text, precision, scale) -> decimal rounded to `scale` digits. Text: blanks around, sign,
/// digits, one point; else 8114 ('' too): "Error converting data type varchar to numeric."; more than
/// precision-scale digits before the point: 8115.
inline constexpr char Num[] = "zel_num";
/// (number or text) -> decimal of 4 digits. Text as for zel_num, and commas between digits and one leading
/// '$' are taken, '' is 0; else 235. Beyond +-922337203685477.5807: 8115.
inline constexpr char Money[] = "zel_money";
/// (number or text) -> REAL. Text: blanks around, sign, digits, point, exponent; '' is 0; else 8114.
inline constexpr char Float[] = "zel_float";
/// (text, width) -> text for a column of that width: what is too long loses trailing blanks; still too long:
/// 8152 "String or binary data would be truncated."
inline constexpr char Text[] = "zel_text";
/// (number, scale, width) -> text with exactly `scale` decimals ("12.50"); longer than `width`: 8115. Width
/// 0: no limit; a negative one: "*" for what is longer.
inline constexpr char NumText[] = "zel_numtext";
/// (REAL) -> shortest text of the number, plain: "12.5", "1234567.25", "12".
inline constexpr char FloatText[] = "zel_floattext";
/// (number or text, style) -> date-time text in the stored form, on a tick of the dialect's clock (.000, .003
/// or .007). A number is days since 1900-01-01. Text, without a style (-1): '' and a time alone (1900-01-01
/// with that time), yyyy-m-d, yyyy/m/d, yyyy.m.d, yyyymmdd, yyyy, m/d/y, m-d-y, m.d.y (two-digit years: 00-49
/// are 20xx), 'd Mon yyyy', 'Mon d yyyy' (comma allowed), each optionally followed by a blank or 'T' and
/// h:m[:s[.mmm]] [am|pm]. Styles 103, 104, 105 (and 3, 4, 5) read day first. No date at all: 241; out of
/// range, or before 1753-01-01: 242. A text that is in the stored form already comes back as it is, quickly.
inline constexpr char Date[] = "zel_date";
/// (number or text, style) -> 'YYYY-MM-DD': as zel_date with the time cut, from year 1 on; '' and a time
/// alone: 241.
inline constexpr char Day[] = "zel_day";
/// (date, style, date only) -> text, as dateText() in dates.h: styles 0 to 14, 20, 21, 100 to 114, 120, 121,
/// 126 and -1 for none; any other: 281. Date only is 1 for a date, whose time of day a style leaves out.
inline constexpr char DateText[] = "zel_datetext";
/// (part, count, date), (part, from, to), (part, date), (part, date) -> as dateAdded(), dateDifference(),
/// partOf() and partName() in dates.h, the part as the number of a DatePart.
inline constexpr char DateAdd[] = "zel_dateadd";
inline constexpr char DateDifference[] = "zel_datediff";
inline constexpr char PartOfDate[] = "zel_datepart";
inline constexpr char PartName[] = "zel_datename";
/// (date, date, sign) -> their sum, or with the sign -1 their difference, as days since 1900-01-01; 8115.
inline constexpr char DateSum[] = "zel_datesum";
/// () -> the local date and time in the stored form, the same within one statement.
inline constexpr char Now[] = "zel_now";

// Arithmetic.

/// (a, b) -> INTEGER, towards zero; b = 0: 8134 "Divide by zero error encountered."
inline constexpr char IntDiv[] = "zel_idiv";
/// (a, b, scale) -> decimal cut, not rounded, to `scale`; scale -1: REAL as it is; b = 0: 8134. Of more
/// digits than a REAL has, those are kept that it has.
inline constexpr char Div[] = "zel_div";
/// (a, b) -> the remainder with the sign of a, INTEGER when both are; b = 0: 8134.
inline constexpr char Mod[] = "zel_mod";
/// (number, digits) -> rounded half away from zero to `digits` (negative: tens, hundreds ...); INTEGER stays
/// INTEGER.
inline constexpr char Round[] = "zel_round";
/// (bits, signs, number, ...) -> INTEGER: the numbers added one after the other, a sign "+" or "-" for each;
/// a sum on the way that has no room in so many bits: 8115.
inline constexpr char AddIntegers[] = "zel_addint";
/// (scale, signs, number, ...) -> the exact sum, as a decimal of so many digits.
inline constexpr char AddDecimals[] = "zel_adddec";

/// (number, digits) -> cut to `digits`, 0 to 8.
inline constexpr char CutTo[] = "zel_cut";

// Aggregates.

/// The scale, 0 to 38, is written behind the name: zel_sum2. (number) -> the exact sum of the numbers, each
/// taken as a decimal of so many digits, over any number of rows; NULLs are left out, NULL when there is
/// nothing to add; a decimal result. A sum that no longer fits: 8115.
inline constexpr char Sum[] = "zel_sum";
/// Named alike: zel_sums2. (number, ...) -> the sums of all of them at once, for SumAt alone.
inline constexpr char Sums[] = "zel_sums";
/// (sums, place) -> one of them, as Sum gives it; places count from 0.
inline constexpr char SumAt[] = "zel_sum_at";
/// (value) -> the value of the only row; NULL without rows; two rows or more (whatever their values): 512
/// "Subquery returned more than 1 value. ..."
inline constexpr char One[] = "zel_one";

} // namespace zel::tsql::sqlite_names
