#include "bulk/batch.hpp"

#include <optional>

#include "alignment/chain_builder.hpp"
#include "alignment/inverse.hpp"
#include "alignment/position.hpp"
#include "core/arguments.hpp"

namespace kesto {

namespace {

void LocateEach(const RoadSearch& search, const PointRows& rows) noexcept {
    for (std::int32_t row = 0; row < rows.count; ++row) {
        const Point point{rows.x[row], rows.y[row]};
        std::optional<Located> located;
        Outcome found = RequireFinite({point.x, point.y});
        if (found) found = Locate(search, point, located);
        if (located) {
            rows.mileage.Set(row, located->stake.mileage);
            rows.offset.Set(row, located->offset);
            rows.occurrence.Set(row, located->stake.occurrence);
        }
        SetStatus(rows.status, row, found);
    }
}

void PlaceEach(const ChainView& chain, const PlaceRows& rows) noexcept {
    for (std::int32_t row = 0; row < rows.count; ++row) {
        const StakeMileage stake{rows.mileage[row], rows.occurrence[row]};
        const Offset offset{rows.offset[row], rows.angle[row]};
        std::optional<Position> position;
        Outcome found = RequireFinite({stake.mileage, offset.distance});
        if (found) found = FindPosition(chain, stake, offset, position);
        if (position) {
            rows.x.Set(row, position->x);
            rows.y.Set(row, position->y);
            rows.azimuth.Set(row, position->azimuth);
        }
        SetStatus(rows.status, row, found);
    }
}

}  // namespace

Outcome AnswerRows(const AskedRoad& asked, const PointRows& rows) {
    if (Outcome current = EnsureCurrent(asked); !current) return current;
    LocateEach(RoadSearch(asked, rows.count), rows);
    return {};
}

Outcome AnswerRows(const AskedRoad& asked, const PlaceRows& rows) {
    if (Outcome current = EnsureCurrent(asked); !current) return current;
    PlaceEach({asked, rows.count}, rows);
    return {};
}

}  // namespace kesto
