#include "embedded/Failure.h"

namespace embedded {

Failure SyntaxFailure(const std::string& near, int line) {
    return Failure(102, "Incorrect syntax near '" + near + "'.", line);
}

Failure OutsideSubset(const std::string& what, int line) {
    return Failure(102, "'" + what + "' is outside the accepted statements.", line);
}

}  // namespace embedded
