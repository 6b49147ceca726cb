// The C++ wrapper, first and alone, twice, with its templates in use.
#include "kesto_road/kesto_road.hpp"

#include "kesto_road/kesto_road.hpp"

int main() {
    kesto::Road road;
    road.Start(0, 0, 0).Straight(100);
    return road.Stakes().empty() && road.Elements().empty() ? 1 : 0;
}
