/// Every tolerance of the house: a name, a unit and a reason. Two that happen to be equal stay two names.
#pragma once

namespace kesto::tolerance {

// Mileages and the element chain
inline constexpr double mileage = 1e-7;            // m: closer than this is the same place on the road
inline constexpr double builtLength = 1e-7;        // m: a total length below this means that no chain is built
inline constexpr double zeroLengthMileage = 1e-9;  // m: how close a mileage must be to an element without length
inline constexpr double splitAtStart = 1e-5;       // m: a break this near to an element's start splits nothing
inline constexpr double sliver = 1e-4;             // m: a remainder up to this is dropped behind a break
inline constexpr double duplicateMileage = 1e-7;   // m: two records closer than this are the same
inline constexpr double jump = 1e-9;               // m: a smaller jump of the stake mileage is rounding

// Element geometry
inline constexpr double distance = 1e-7;  // m: below this a distance is zero; how far past its end an element holds
inline constexpr double infiniteRadius = 1e-7;      // m: a radius below this stands for an infinite one
inline constexpr double azimuth = 1e-7;             // degrees: an azimuth this near to 0 is 0
inline constexpr double offset = 1e-7;              // m: an offset up to this lies on the centre line
inline constexpr double clothoidTerm = 1e-4;        // 1: the clothoid sums end when their last term is not above this
inline constexpr double clothoidOverflow = 1e32;    // 1: a term above this makes the clothoid sums useless
inline constexpr double clothoidSeriesAngle = 3.0;  // rad: beyond this turn from the origin the sums lose digits

// Generation of elements
inline constexpr double samePoint = 1e-7;   // m: neighbouring points this near cannot be joined
inline constexpr double deflection = 1e-7;  // rad: a deflection below this, or this near to 180 degrees, has no curve
inline constexpr double arcAngle = 1e-7;    // rad: how much more than the deflection spirals may turn by rounding
inline constexpr double arcLength = 1e-9;   // m: a shorter arc between two spirals is none
inline constexpr double tangentOverlap = 1e-3;  // m: published tables are rounded, so curves that just touch overlap
inline constexpr double shortStraight = 1e-4;   // m: a straight up to this is left out between two curves
inline constexpr double meetsPoint = 1e-9;      // m: how near a solved spiral comes to its end point

// Inverse projection
inline constexpr double startPoint = 1e-4;    // m: sum of coordinate differences that counts as the start point
inline constexpr double rightAngle = 1e-7;    // rad: how close to a right angle the spiral's foot is found
inline constexpr double footDistance = 1e-7;  // m: a point this near to a bracket end lies on it
inline constexpr double onTheLine = 1e-7;     // m: a foot this near ends the search

// Index of the inverse projection: beyond these sizes its bounds prove nothing, and the search walks
inline constexpr double indexSlack = 1e-3;      // m: how much bounds of distances give way, far above any rounding
inline constexpr double indexCoordinate = 1e8;  // m: largest coordinate
inline constexpr double indexLength = 1e7;      // m: longest element
inline constexpr double indexRadius = 1e10;     // m: largest radius
inline constexpr double indexAzimuth = 1e5;     // degrees: largest azimuth

// Stake list
inline constexpr double stakePoint = 1e-7;      // m: a stake this near, in x and in y, to the one before is the same
inline constexpr double matchingPoint = 1e-10;  // m: a point this near, in x and in y, is the stake's own
inline constexpr double stakeEnd = 1e-7;        // m: regular stakes keep this distance from an element's ends
inline constexpr double paddedMetres = 1e-7;    // m: this close below 10 or 100 a stake text is no longer padded

// Vertical profile
inline constexpr double profileEnd = 1e-7;  // m: how far past the road's end, or around the last point, heights hold

// Exchange files
inline constexpr double curveLength = 1e-7;  // m: a vertical curve shorter than this is written as a point

// Part of a road
inline constexpr double cutTransition = 0.9e-6;  // per cent or m: chords of a transition stay nearer, decimals included

// Cross section
inline constexpr double plateEdge = 1e-7;  // m: this close beyond a plate's edge an offset still lies on the plate

}  // namespace kesto::tolerance
