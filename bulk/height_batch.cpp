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

Outcome AnswerRows(const AskedRoad& asked, const HeightRows& rows) {
    if (Outcome current = EnsureCurrent(asked); !current) return current;
    CurrentProfile(asked);
    FindEach({asked, rows.count}, rows);
    return {};
}

}  // namespace kesto
