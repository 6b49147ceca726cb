#include "tables/stakes.hpp"

#include "road/conventions.hpp"
#include "tables/csv.hpp"
#include "terminal/numbers.hpp"
#include "terminal/output.hpp"

namespace kesto::host {

namespace {

constexpr int azimuthDecimals = 6;  // degrees

}  // namespace

std::int32_t WriteStakes(RoadDesign* road, const RoadLine& line, const std::string& path, int decimals) {
    Output out(path);
    out.Write("name,label,mileage,occurrence,x,y,azimuth,design_height\n");
    StakeCoordinate stake{};
    std::int32_t count = 0;
    for (; GetStakeCoordinate(road, count, &stake); ++count) {
        double x = 0;
        double y = 0;
        double azimuth = 0;
        const bool placed =
            GetPositionAndAzimuth(road, stake.mileage, 0, squareOffset, &x, &y, &azimuth, stake.occurrence);
        const auto height = line.HeightAt({stake.mileage, stake.occurrence});
        out.Write(CsvField(stake.name) + "," + CsvField(stake.label) + "," + FormatReal(stake.mileage, decimals) + "," +
                  std::to_string(stake.occurrence) + "," + FormatReal(stake.x, decimals) + "," +
                  FormatReal(stake.y, decimals) + "," + (placed ? FormatReal(azimuth, azimuthDecimals) : "") + "," +
                  (height ? FormatReal(*height, decimals) : "") + "\n");
    }
    out.Finish();
    return count;
}

}  // namespace kesto::host
