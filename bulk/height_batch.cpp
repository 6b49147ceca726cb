#include "bulk/height_batch.hpp"

#include <optional>

#include "alignment/chain_builder.hpp"
#include "profile/vertical_curves.hpp"
#include "section/road_side.hpp"

namespace kesto {

namespace {

void FindEach(const ChainView& chain, const HeightRows& rows) noexcept {
    for (std::int32_t row = 0; row < rows.count; ++row) {
        std::optional<double> height;
        const Outcome found = HeightOf(chain, {rows.mileage[row], rows.occurrence[row]}, rows.offset[row], height);
        if (height) rows.height.Set(row, *height);
        SetStatus(rows.status, row, found);
    }
}

}  // namespace

Outcome AnswerRows(RoadDesign& road, const HeightRows& rows) {
    if (Outcome current = EnsureCurrent(road); !current) return current;
    CurrentProfile(road);
    FindEach({road, rows.count}, rows);
    return {};
}

Outcome AnswerRows(const FrozenRoad& frozen, const HeightRows& rows) noexcept {
    FindEach(frozen.road, rows);
    return {};
}

}  // namespace kesto
