/** @file layout.h
 *  Compile-time check that this compiler lays the records out as the library does. Included by kesto_road.h.
 *  written by scripts/interface update */
#ifndef KESTO_ROAD_LAYOUT_H
#define KESTO_ROAD_LAYOUT_H

#if defined(__cplusplus)
#define KESTO_STATIC_ASSERT(condition, name) static_assert(condition, #name)
#elif defined(__STDC_VERSION__) && __STDC_VERSION__ >= 201112L
#define KESTO_STATIC_ASSERT(condition, name) _Static_assert(condition, #name)
#else
#define KESTO_STATIC_ASSERT(condition, name) typedef char kesto_assert_##name[(condition) ? 1 : -1]
#endif

#define KESTO_ASSERT_SIZE(Record, size) KESTO_STATIC_ASSERT(sizeof(Record) == (size), size_of_##Record)
#define KESTO_ASSERT_OFFSET(Record, field, offset) \
    KESTO_STATIC_ASSERT(offsetof(Record, field) == (offset), offset_of_##Record##_##field)

KESTO_ASSERT_SIZE(bool, 1);

KESTO_ASSERT_SIZE(Intersection, 96);
KESTO_ASSERT_OFFSET(Intersection, x, 32);
KESTO_ASSERT_OFFSET(Intersection, y, 40);
KESTO_ASSERT_OFFSET(Intersection, radius, 48);
KESTO_ASSERT_OFFSET(Intersection, spiralIn, 56);
KESTO_ASSERT_OFFSET(Intersection, spiralOut, 64);
KESTO_ASSERT_OFFSET(Intersection, radiusIn, 72);
KESTO_ASSERT_OFFSET(Intersection, radiusOut, 80);
KESTO_ASSERT_OFFSET(Intersection, reserved, 88);

KESTO_ASSERT_SIZE(Element, 80);
KESTO_ASSERT_OFFSET(Element, turnDirection, 4);
KESTO_ASSERT_OFFSET(Element, startMileage, 8);
KESTO_ASSERT_OFFSET(Element, startX, 16);
KESTO_ASSERT_OFFSET(Element, startY, 24);
KESTO_ASSERT_OFFSET(Element, startAzimuth, 32);
KESTO_ASSERT_OFFSET(Element, flag, 40);
KESTO_ASSERT_OFFSET(Element, secondAzimuth, 48);
KESTO_ASSERT_OFFSET(Element, startRadius, 56);
KESTO_ASSERT_OFFSET(Element, endRadius, 64);
KESTO_ASSERT_OFFSET(Element, length, 72);

KESTO_ASSERT_SIZE(Coordinate, 64);
KESTO_ASSERT_OFFSET(Coordinate, turnDirection, 4);
KESTO_ASSERT_OFFSET(Coordinate, x, 8);
KESTO_ASSERT_OFFSET(Coordinate, y, 16);
KESTO_ASSERT_OFFSET(Coordinate, radius, 24);
KESTO_ASSERT_OFFSET(Coordinate, name, 32);

KESTO_ASSERT_SIZE(BrokenChain, 16);
KESTO_ASSERT_OFFSET(BrokenChain, aheadMileage, 8);

KESTO_ASSERT_SIZE(VerticalCurve, 96);
KESTO_ASSERT_OFFSET(VerticalCurve, startMileage, 8);
KESTO_ASSERT_OFFSET(VerticalCurve, startOccurrence, 16);
KESTO_ASSERT_OFFSET(VerticalCurve, endMileage, 24);
KESTO_ASSERT_OFFSET(VerticalCurve, endOccurrence, 32);
KESTO_ASSERT_OFFSET(VerticalCurve, mileage, 40);
KESTO_ASSERT_OFFSET(VerticalCurve, occurrence, 48);
KESTO_ASSERT_OFFSET(VerticalCurve, elevation, 56);
KESTO_ASSERT_OFFSET(VerticalCurve, gradeOut, 64);
KESTO_ASSERT_OFFSET(VerticalCurve, radius, 72);
KESTO_ASSERT_OFFSET(VerticalCurve, distanceToNext, 80);
KESTO_ASSERT_OFFSET(VerticalCurve, tangentLength, 88);

KESTO_ASSERT_SIZE(StakeCoordinate, 136);
KESTO_ASSERT_OFFSET(StakeCoordinate, label, 32);
KESTO_ASSERT_OFFSET(StakeCoordinate, reserved, 64);
KESTO_ASSERT_OFFSET(StakeCoordinate, mileage, 72);
KESTO_ASSERT_OFFSET(StakeCoordinate, occurrence, 80);
KESTO_ASSERT_OFFSET(StakeCoordinate, x, 88);
KESTO_ASSERT_OFFSET(StakeCoordinate, y, 96);
KESTO_ASSERT_OFFSET(StakeCoordinate, extra, 104);

KESTO_ASSERT_SIZE(SectionPlate, 128);
KESTO_ASSERT_OFFSET(SectionPlate, code, 32);
KESTO_ASSERT_OFFSET(SectionPlate, width, 64);
KESTO_ASSERT_OFFSET(SectionPlate, offset, 72);
KESTO_ASSERT_OFFSET(SectionPlate, crossSlope, 80);
KESTO_ASSERT_OFFSET(SectionPlate, step, 88);
KESTO_ASSERT_OFFSET(SectionPlate, x, 96);
KESTO_ASSERT_OFFSET(SectionPlate, y, 104);
KESTO_ASSERT_OFFSET(SectionPlate, height, 112);
KESTO_ASSERT_OFFSET(SectionPlate, extra, 120);

KESTO_ASSERT_SIZE(SectionMileageIndex, 40);
KESTO_ASSERT_OFFSET(SectionMileageIndex, mileage, 32);

KESTO_ASSERT_SIZE(EaseParam, 40);
KESTO_ASSERT_OFFSET(EaseParam, deflection, 8);
KESTO_ASSERT_OFFSET(EaseParam, shift, 16);
KESTO_ASSERT_OFFSET(EaseParam, tangentOffset, 24);
KESTO_ASSERT_OFFSET(EaseParam, chord, 32);

KESTO_ASSERT_SIZE(Failure, 40);
KESTO_ASSERT_OFFSET(Failure, list, 4);
KESTO_ASSERT_OFFSET(Failure, record, 8);
KESTO_ASSERT_OFFSET(Failure, limit, 12);
KESTO_ASSERT_OFFSET(Failure, value, 16);
KESTO_ASSERT_OFFSET(Failure, bound, 24);
KESTO_ASSERT_OFFSET(Failure, excess, 32);

KESTO_ASSERT_SIZE(ReadingFinding, 120);
KESTO_ASSERT_OFFSET(ReadingFinding, reason, 4);
KESTO_ASSERT_OFFSET(ReadingFinding, otherLine, 8);
KESTO_ASSERT_OFFSET(ReadingFinding, field, 12);
KESTO_ASSERT_OFFSET(ReadingFinding, status, 16);
KESTO_ASSERT_OFFSET(ReadingFinding, list, 20);
KESTO_ASSERT_OFFSET(ReadingFinding, record, 24);
KESTO_ASSERT_OFFSET(ReadingFinding, limit, 28);
KESTO_ASSERT_OFFSET(ReadingFinding, section, 32);
KESTO_ASSERT_OFFSET(ReadingFinding, text, 64);
KESTO_ASSERT_OFFSET(ReadingFinding, value, 96);
KESTO_ASSERT_OFFSET(ReadingFinding, bound, 104);
KESTO_ASSERT_OFFSET(ReadingFinding, excess, 112);

#undef KESTO_ASSERT_OFFSET
#undef KESTO_ASSERT_SIZE
#undef KESTO_STATIC_ASSERT

#endif
