/* The C header, first and alone, twice. */
#include "kesto_road/kesto_road.h"

#include "kesto_road/kesto_road.h"

int main(void) { return StartRoadDesign() == NULL; }
