// The C header in C++, first and alone, twice.
#include "kesto_road/kesto_road.h"

#include "kesto_road/kesto_road.h"

int main() { return StartRoadDesign() == nullptr ? 1 : 0; }
