/// Design heights of many rows at once. Every row is what the one-point query gives, to the bit.
#pragma once

#include "bulk/strided.hpp"
#include "core/asked_road.hpp"
#include "core/result.hpp"

namespace kesto {

/// Places whose heights are asked for: the columns of GetHeightBatch().
struct HeightRows {
    std::int32_t count;
    ColumnIn<double> mileage;  // m
    ColumnIn<std::int32_t> occurrence;
    ColumnIn<double> offset;  // m
    ColumnOut<double> height;
    StatusColumn status;

    Outcome Check() const noexcept {
        return RequireColumns(count, {mileage.IsGiven(), height.IsGiven(), status.IsGiven()});
    }
};

/// Answers every row; rows fail alone. Makes the road current and derives the profile first and allocates nothing after
/// that.
/// @return fails, with nothing written, where no road can be built
Outcome AnswerRows(const AskedRoad& asked, const HeightRows& rows);

}  // namespace kesto
