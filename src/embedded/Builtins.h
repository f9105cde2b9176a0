#pragma once

#include <optional>
#include <string>
#include <vector>

#include "embedded/Fragment.h"

namespace embedded {

bool IsAggregate(const std::string& name);

/// COUNT, SUM, MIN, MAX or AVG; no argument stands for COUNT(*).
Fragment AggregateCall(const std::string& name, bool distinct, const std::optional<Fragment>& value,
                       int line);

/// A built-in function of the subset by upper-case name, with the date part of DATEADD and its
/// like. Throws Failure 195 for unknown functions and 174 for a wrong number of arguments.
Fragment BuiltinCall(const std::string& name, const std::string& part,
                     const std::vector<Fragment>& arguments, int line);

}  // namespace embedded
