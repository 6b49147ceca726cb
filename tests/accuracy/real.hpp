/// The number type of the reference: 113 bits of mantissa, in software, the same on every machine.
#pragma once

#include <boost/math/constants/constants.hpp>
#include <boost/multiprecision/cpp_bin_float.hpp>

namespace reference {

using Real = boost::multiprecision::cpp_bin_float_quad;

inline Real Pi() { return boost::math::constants::pi<Real>(); }
inline Real ToRadians(const Real& degrees) { return degrees * Pi() / 180; }

/// An angle (rad) as degrees in [0, 360).
inline Real ToAzimuth(const Real& angle) {
    const Real turns = angle / (2 * Pi());
    return (turns - floor(turns)) * 360;
}

}  // namespace reference
