/// Positions and inverse projections of many rows at once. Every row is what the one-point query gives, to the bit.
#pragma once

#include "bulk/strided.hpp"
#include "core/asked_road.hpp"
#include "core/result.hpp"

namespace kesto {

/// Points to be located: the columns of GetMileageAndOffsetBatch().
struct PointRows {
    std::int32_t count;
    ColumnIn<double> x;  // m
    ColumnIn<double> y;  // m
    ColumnOut<double> mileage;
    ColumnOut<double> offset;
    ColumnOut<std::int32_t> occurrence;
    StatusColumn status;

    Outcome Check() const noexcept {
        return RequireColumns(count, {x.IsGiven(), y.IsGiven(), mileage.IsGiven(), offset.IsGiven(),
                                      occurrence.IsGiven(), status.IsGiven()});
    }
};

/// Places whose points are asked for: the columns of GetPositionAndAzimuthBatch().
struct PlaceRows {
    std::int32_t count;
    ColumnIn<double> mileage;  // m
    ColumnIn<std::int32_t> occurrence;
    ColumnIn<double> offset;  // m
    ColumnIn<double> angle;   // degrees
    ColumnOut<double> x;
    ColumnOut<double> y;
    ColumnOut<double> azimuth;
    StatusColumn status;

    Outcome Check() const noexcept {
        return RequireColumns(count,
                              {mileage.IsGiven(), x.IsGiven(), y.IsGiven(), azimuth.IsGiven(), status.IsGiven()});
    }
};

/// Answers every row; rows fail alone. Makes the road current first and allocates nothing after that.
/// @return fails, with nothing written, where no road can be built
Outcome AnswerRows(const AskedRoad& asked, const PointRows& rows);
Outcome AnswerRows(const AskedRoad& asked, const PlaceRows& rows);

}  // namespace kesto
