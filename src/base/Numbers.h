#pragma once

#include <QString>

/// How numbers are read from and written as text, everywhere in the program.
namespace base {

/// The leading number of a text: blanks are skipped, digits with one point and an exponent are
/// read, the rest is ignored. 0 when the text does not start with a number. Throws RuntimeError 6
/// ("Overflow") for a number that no double holds.
double Val(const QString& text);

/// Plain decimal text: at most 15 significant digits, no grouping, no exponent, no trailing
/// zeros, "-" for negatives, "0" for zero (also for -0 and for what is too small to show: below
/// 1e-15). Empty for what is not a finite number.
QString PlainText(double number);

/// "0.00": the 15-digit decimal text rounded half away from zero to two decimals, so that 1.005
/// is shown as "1.01". Never "-0.00".
QString MoneyText(double amount);

/// The 15-digit decimal text of a number rounded half away from zero to so many decimals; a
/// negative count rounds to tens, hundreds and so on.
double RoundDecimal(double number, int decimals);

/// Plain text with exactly so many decimals (0 to 15), rounded like RoundDecimal(). Never "-0.00".
QString FixedText(double number, int decimals);

/// The nearest 16-bit whole number, halves to the even neighbour. Throws RuntimeError 6
/// ("Overflow") outside -32768..32767 and for what is not a number.
short ToInt16(double number);

/// True when the whole text reads as a number: the test that tells an admission number
/// (in-patient) from a visit number (out-patient). Blanks around it are allowed; empty is not.
bool IsNumeric(const QString& text);

}  // namespace base
