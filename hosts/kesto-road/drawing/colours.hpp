/// The colours of the drawings.
#pragma once

#include "kesto_road/kesto_road.h"
#include "road/conventions.hpp"

namespace kesto::host {

struct Colour {
    double red = 0, green = 0, blue = 0;
};

namespace colours {
inline constexpr Colour ink{0.10, 0.10, 0.12};
inline constexpr Colour faint{0.80, 0.82, 0.84};
inline constexpr Colour dim{0.42, 0.44, 0.48};
inline constexpr Colour straight{0.20, 0.22, 0.25};
inline constexpr Colour arc{0.80, 0.16, 0.12};
inline constexpr Colour spiral{0.10, 0.38, 0.78};
inline constexpr Colour polygon{0.50, 0.53, 0.57};
inline constexpr Colour polygonName{0.05, 0.42, 0.38};
inline constexpr Colour verticalCurve{0.05, 0.52, 0.32};
inline constexpr Colour brokenChain{0.65, 0.10, 0.60};
inline constexpr Colour leftSide{0.00, 0.45, 0.62};
inline constexpr Colour rightSide{0.88, 0.43, 0.00};
inline constexpr Colour pavement{0.90, 0.91, 0.92};
}  // namespace colours

/// Colour of an element by its type.
inline Colour ElementColour(const Element& element) noexcept {
    switch (element.type) {
        case arcType: return colours::arc;
        case spiralType: return colours::spiral;
        default: return colours::straight;
    }
}

}  // namespace kesto::host
