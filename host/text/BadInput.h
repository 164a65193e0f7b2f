#pragma once

#include <stdexcept>

namespace Keltrix::Host {

/// Input that cannot be used; the message names the place.
class BadInput : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

} // namespace Keltrix::Host
