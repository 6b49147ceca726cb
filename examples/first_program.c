/* A first program: a road of five elements with a broken chain and a profile, and the station of a measured point. */
#include <math.h>
#include <stdio.h>

#include "kesto_road/kesto_road.h"

enum { STRAIGHT = 1, ARC = 2, SPIRAL = 3, RIGHT = 1 };

/* Appends an element that begins where the last one ends. Radius 0 is straight. */
static bool Append(RoadDesign* road, int32_t type, double startRadius, double endRadius, double length) {
    Element last, next = {0};
    if (!GetElement(road, GetElementCount(road) - 1, &last)) return false;
    next.type = type;
    next.turnDirection = RIGHT;
    next.startRadius = startRadius;
    next.endRadius = endRadius;
    next.length = length;
    return GetElementPositionAndAzimuth(road, &last, last.length, &next.startX, &next.startY, &next.startAzimuth) &&
           AddElement(road, &next, -1);
}

/* x is north and y is east (m), azimuths are degrees clockwise from north. */
static bool Build(RoadDesign* road) {
    const BrokenChain jump = {300, 200}; /* at K0+300 the stakes jump back to K0+200 */
    const VerticalCurve profile[] = {{.mileage = 0, .elevation = 100},
                                     {.mileage = 250, .elevation = 105, .radius = 6000},
                                     {.mileage = 400, .elevation = 100}};
    SetRoadDesignMode(road, 1);
    return SetStartInformation(road, 4203100, 512400, 30) && Append(road, STRAIGHT, 0, 0, 120) &&
           Append(road, SPIRAL, 0, 300, 60) && Append(road, ARC, 300, 0, 150) && Append(road, SPIRAL, 300, 0, 60) &&
           Append(road, STRAIGHT, 0, 0, 110) && AddBrokenChain(road, &jump) && AddVerticalCurveList(road, profile, 3) &&
           DesignRoad(road);
}

int main(void) {
    double mileage, offset, height;
    int32_t occurrence;
    Failure failure = {0};
    RoadDesign* road = StartRoadDesign();
    const bool answered = Build(road) &&
                          GetMileageAndOffset(road, 4203362.959, 512624.399, &mileage, &offset, &occurrence) &&
                          GetHeight(road, mileage, occurrence, 0, &height);
    if (answered) {
        const double kilometres = floor(mileage / 1000);
        printf("station     %sK%.0f+%07.3f\n", occurrence > 0 ? "+" : "", kilometres, mileage - 1000 * kilometres);
        printf("occurrence  %d\n", (int)occurrence);
        printf("offset      %.3f m %s\n", fabs(offset), offset < 0 ? "left" : "right");
        printf("height      %.3f m\n", height);
    } else {
        GetLastFailure(road, &failure);
        fprintf(stderr, "no answer: %s\n", DescribeStatus(failure.status));
    }
    EndRoadDesign(road);
    return answered ? 0 : 1;
}
