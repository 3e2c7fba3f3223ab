#pragma once

#include <stdexcept>

namespace bellmark {

/// The data acquisition board does not do what it was asked for; what() tells the operator why.
class BoardError : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

}  // namespace bellmark
