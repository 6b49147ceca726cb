/// What the formulas of an element need again and again, worked out once: plain data.
#pragma once

namespace kesto {

/// A direction in the plane.
struct Heading {
    double cosine = 1;
    double sine = 0;
};

/// A stretch of a clothoid as an element travels it.
struct ClothoidStretch {
    double rate = 0;      // 1/m2: curvature rate k of the clothoid
    double start = 0;     // m: distance of the stretch's start from the clothoid's origin, along the clothoid
    double sense = 1;     // +1 travelled away from the origin (curvature grows), -1 towards it
    double farAngle = 0;  // rad: tangent angle at the end farther from the origin
};

/// A stretch with the point and the tangent of the clothoid at its start.
struct ClothoidFrame {
    ClothoidStretch stretch;
    double fromX = 0;  // m, along the tangent at the clothoid's origin
    double fromY = 0;  // m, square to it
    Heading tangent;
};

/// Where an element begins.
struct StartFrame {
    double x = 0;        // m
    double y = 0;        // m
    double azimuth = 0;  // degrees
    Heading heading;     // of the azimuth
    bool left = false;   // the side of the turn
};

/// What evaluating an element needs at every distance alike.
struct EvaluationFrame {
    Heading heading;         // of the start azimuth
    ClothoidFrame clothoid;  // of a spiral with series
    bool hasSeries = false;
};

/// What a foot on a straight or an arc is computed from.
struct FootFrame {
    double x = 0;          // m: start point
    double y = 0;          // m
    double length = 0;     // m
    double direction = 0;  // degrees: straight, from start point to end point; arc, from centre to start point
    double centreX = 0;    // m: of an arc
    double centreY = 0;    // m
    double radius = 0;     // m
    bool left = false;     // the side of the turn
};

}  // namespace kesto
