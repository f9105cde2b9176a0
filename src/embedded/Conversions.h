#pragma once

#include "embedded/FunctionCall.h"

/// The first argument of a call, of whatever kind, as a value of one of the server's types.
namespace embedded {

void ToInt(FunctionCall& call);
/// Money becomes a whole number by rounding, halves away from zero; everything else is cut.
void ToIntRounded(FunctionCall& call);
void ToBigInt(FunctionCall& call);
void ToBit(FunctionCall& call);
void ToMoney(FunctionCall& call);
void ToFloat(FunctionCall& call);
/// With precision and scale as second and third argument.
void ToDecimal(FunctionCall& call);
void ToDateTime(FunctionCall& call);

}  // namespace embedded
