/** @file kesto_road.hpp
 *  Comfort for C++17 callers over the C interface of kesto_road.h: a handle that ends itself, optionals in place of
 *  output pointers, and elements appended one behind the other. Header only: it adds nothing to the binary interface.
 *
 *  Axes, units, mileages, occurrences and the rule about threads are those of kesto_road.h.
 *
 *  Failures:
 *  - the constructor throws std::bad_alloc;
 *  - what builds a road (Start, Straight, Arc, Spiral, BrokenChain, GradePoint, Plate, Change) throws kesto::Error
 *    and adds nothing, so a road cannot silently miss a piece; so do batches as a whole, ToMemory and freezing;
 *  - queries return an empty optional, Design and Update return false, Open, Save and ExportLandXml a status:
 *    LastFailure() tells why.
 */
#ifndef KESTO_ROAD_KESTO_ROAD_HPP
#define KESTO_ROAD_KESTO_ROAD_HPP

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <memory>
#include <new>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

#include "kesto_road/kesto_road.h"

namespace kesto {

/** Point of the road with the direction of the centre line. */
struct Position {
    double x = 0;       /**< northing (m) */
    double y = 0;       /**< easting (m) */
    double azimuth = 0; /**< tangent azimuth of the centre line (degrees, clockwise from +x) */
};

/** Place of a point relative to the road. */
struct Location {
    double mileage = 0;          /**< stake mileage of the foot (m) */
    std::int32_t occurrence = 0; /**< which of the equal stake mileages, 0-based */
    double offset = 0;           /**< offset from the centre line (m), positive to the right */
};

/** Side to which an arc or a spiral turns, looking along it. */
enum class Turn : std::uint8_t { Left = 0, Right = 1 };

/** Side of the road, looking towards increasing mileage. */
enum class Side : std::int32_t { Left = 0, Right = 1 };

/** What a change section alters. */
enum class ChangeOf : std::int32_t {
    CrossSlope = 0, /**< superelevation: the values are cross slopes (per cent) */
    Width = 1       /**< widening: the values are widths (m) */
};

/** How the values pass from the change section before, or from the road's start, to this one: with t from 0 to 1 along
 *  the stretch the share t, t^2 (3 - 2t) or t^3 (4 - 3t) of the difference. */
enum class Transition : std::int32_t { Linear = 0, Cubic = 1, FourthDegree = 2 };

/** A status code as an English sentence: static text, never null. */
inline const char* Describe(std::int32_t status) { return DescribeStatus(status); }

/** Thrown where a road cannot be built up as asked. what() is the sentence of the status. */
class Error : public std::runtime_error {
public:
    /** @param code a KestoStatus */
    explicit Error(std::int32_t code) : std::runtime_error(Describe(code)), status(code) {}

    /** The KestoStatus. */
    std::int32_t Status() const noexcept { return status; }

private:
    std::int32_t status;
};

/** A column of a batch: a value for each row, at equal distances in the caller's memory. Converts from a pointer to a
 *  plain array; for a field of an array of records the step is the size of the record.
 *  @tparam Value what it holds, const for inputs */
template <class Value>
struct Column {
    /** No column: for inputs that need not be given. */
    Column() = default;
    /** @param values   the first row's value
     *  @param byteStep distance from one row to the next (bytes); 0 repeats an input. To walk backwards, set `step` */
    Column(Value* values, std::size_t byteStep = sizeof(Value))  // NOLINT(google-explicit-constructor)
        : first(values), step(static_cast<std::int32_t>(byteStep)) {}

    Value* first = nullptr; /**< the first row's value */
    std::int32_t step = 0;  /**< bytes */
};

/** The columns of many points to be located. */
struct PointColumns {
    Column<const double> x;          /**< northing (m) */
    Column<const double> y;          /**< easting (m) */
    Column<double> mileage;          /**< out: stake mileage (m) */
    Column<double> offset;           /**< out: offset (m), positive to the right */
    Column<std::int32_t> occurrence; /**< out: which of the equal stake mileages */
    Column<std::uint8_t> status;     /**< out: a KestoStatus */

    /** Hands the columns to the batch function and gives its result. */
    bool Run(RoadDesign* road, std::int32_t count) const {
        return GetMileageAndOffsetBatch(road, count, x.first, x.step, y.first, y.step, mileage.first, mileage.step,
                                        offset.first, offset.step, occurrence.first, occurrence.step, status.first,
                                        status.step);
    }
};

/** The columns of many places whose points are asked for. */
struct PlaceColumns {
    Column<const double> mileage;          /**< stake mileage (m) */
    Column<const std::int32_t> occurrence; /**< which of the equal stake mileages; none: 0 */
    Column<const double> offset;           /**< offset (m), positive to the right; none: 0 */
    Column<const double> angle;            /**< from the tangent clockwise to the offset line (degrees); none: 90 */
    Column<double> x;                      /**< out: northing (m) */
    Column<double> y;                      /**< out: easting (m) */
    Column<double> azimuth;                /**< out: azimuth of the centre line (degrees) */
    Column<std::uint8_t> status;           /**< out: a KestoStatus */

    /** Hands the columns to the batch function and gives its result. */
    bool Run(RoadDesign* road, std::int32_t count) const {
        return GetPositionAndAzimuthBatch(road, count, mileage.first, mileage.step, occurrence.first, occurrence.step,
                                          offset.first, offset.step, angle.first, angle.step, x.first, x.step, y.first,
                                          y.step, azimuth.first, azimuth.step, status.first, status.step);
    }
};

/** The columns of many places whose heights are asked for. */
struct HeightColumns {
    Column<const double> mileage;          /**< stake mileage (m) */
    Column<const std::int32_t> occurrence; /**< which of the equal stake mileages; none: 0 */
    Column<const double> offset;           /**< offset (m), positive to the right; none: 0 */
    Column<double> height;                 /**< out: design height (m) */
    Column<std::uint8_t> status;           /**< out: a KestoStatus */

    /** Hands the columns to the batch function and gives its result. */
    bool Run(RoadDesign* road, std::int32_t count) const {
        return GetHeightBatch(road, count, mileage.first, mileage.step, occurrence.first, occurrence.step, offset.first,
                              offset.step, height.first, height.step, status.first, status.step);
    }
};

/** What can be asked of a road, live or frozen. A query of a live road may rebuild what the road derives, so one thread
 *  at a time asks it, const or not; a frozen one answers any number of threads at once. */
class RoadQueries {
public:
    /** The handle, for every function of kesto_road.h; stays owned by this object. */
    RoadDesign* Handle() const noexcept { return handle.get(); }

    /** Point at a stake mileage, on the chain as it stands: Design(), Update() or Open() must have built it.
     *  @param mileage    stake mileage (m)
     *  @param offset     offset square to the centre line (m), positive to the right
     *  @param occurrence which of the equal stake mileages, 0-based
     *  @return empty: the road does not have this mileage in this occurrence */
    std::optional<Position> At(double mileage, double offset = 0, std::int32_t occurrence = 0) const {
        Position at;
        const bool found =
            GetPositionAndAzimuth(Handle(), mileage, offset, squareAngle, &at.x, &at.y, &at.azimuth, occurrence);
        return When(found, at);
    }

    /** Mileage and offset of a point, searched on the whole road.
     *  @param x, y the point (m)
     *  @return empty: no part of the road lies beside the point */
    std::optional<Location> Locate(double x, double y) const {
        Location at;
        return When(GetMileageAndOffset(Handle(), x, y, &at.mileage, &at.offset, &at.occurrence), at);
    }

    /** Mileage and offset of a point, searched between two places of the road (their offsets are not read). Where a
     *  limit is the nearest point it becomes the result.
     *  @param x, y         the point (m)
     *  @param lower, upper limits: stake mileage (m) and occurrence
     *  @return empty: see GetMileAndOffsetInLim() */
    std::optional<Location> LocateBetween(double x, double y, const Location& lower, const Location& upper) const {
        Location at;
        const bool found = GetMileAndOffsetInLim(Handle(), x, y, lower.mileage, lower.occurrence, upper.mileage,
                                                 upper.occurrence, &at.mileage, &at.offset, &at.occurrence);
        return When(found, at);
    }

    /** Design height.
     *  @param mileage    stake mileage (m)
     *  @param occurrence which of the equal stake mileages, 0-based
     *  @param offset     offset from the centre line (m), positive to the right
     *  @return height (m), 0 on the centre line of a road without grade points; empty: no such place, or no height */
    std::optional<double> Height(double mileage, std::int32_t occurrence = 0, double offset = 0) const {
        double height = 0;
        return When(GetHeight(Handle(), mileage, occurrence, offset, &height), height);
    }

    /** The cross section of one side, from the centre line outwards: every plate with its width and cross slope here,
     * and the offset (positive on both sides), point and design height of its outer edge. Design() must have run.
     *  @param mileage    stake mileage (m)
     *  @param side       side of the road
     *  @param occurrence which of the equal stake mileages, 0-based
     *  @return heights counted from the centre line for a road without grade points; empty: no plates, no such place,
     * or no stakes yet */
    std::optional<std::vector<SectionPlate>> RoadSide(double mileage, Side side, std::int32_t occurrence = 0) const {
        std::vector<SectionPlate> plates;
        SectionPlateArray array{nullptr, GetStandardSectionPlateCount(Handle(), static_cast<std::int32_t>(side)), 0};
        bool found = false;
        do {
            plates.resize(static_cast<std::size_t>(array.count));
            array = {plates.data(), 0, static_cast<std::int32_t>(plates.size())};
            found = GetRoadSide(Handle(), mileage, occurrence, static_cast<std::int32_t>(side), &array);
        } while (!found && array.count > array.capacity);
        return When(found, plates);
    }

    /** Continuous mileage (start mileage plus distance along the road) of a stake mileage.
     *  @param mileage    stake mileage (m)
     *  @param occurrence which of the equal stake mileages, 0-based
     *  @return continuous mileage (m); empty: the road does not have this mileage in this occurrence */
    std::optional<double> ContinuousMileage(double mileage, std::int32_t occurrence = 0) const {
        return When(GetSrcMileage(Handle(), &mileage, occurrence), mileage);
    }

    /** The design stake nearest to a point's foot on the road. @return empty: see GetNearbyStakeCoordinate() */
    std::optional<StakeCoordinate> NearestStake(double x, double y) const {
        StakeCoordinate stake{};
        std::int32_t occurrence = 0;
        return When(GetNearbyStakeCoordinate(Handle(), x, y, &stake, &occurrence), stake);
    }

    /** The stakes of the last design run, in the order of travel. */
    std::vector<StakeCoordinate> Stakes() const { return Copies(GetStakeCoordinateCount, GetStakeCoordinate); }

    /** The elements, the start record first. */
    std::vector<Element> Elements() const { return Copies(GetElementCount, GetElement); }

    /** A mileage as it is written on a stake: "K12+345.678", rounded to the millimetre; "+" in front marks a later
     *  occurrence, "-" a negative mileage. "?" where it is not finite.
     *  @param mileage    stake mileage (m)
     *  @param occurrence which of the equal stake mileages, 0-based */
    std::string StakeText(double mileage, std::int32_t occurrence = 0) const {
        return FormatStake(std::round(mileage * 1000) / 1000, occurrence).value_or("?");
    }

    /** Why the last failed call on this road failed; empty when none has failed. */
    std::optional<Failure> LastFailure() const {
        Failure failure{};
        return When(GetLastFailure(Handle(), &failure), failure);
    }

    // Many points

    /** Mileages and offsets of many points. @throws Error as GetMileageAndOffsetBatch() is false */
    void Locate(std::int32_t count, const PointColumns& columns) const {
        Require(count >= 0, KESTO_RECORD_COUNT_REFUSED);
        Require(columns.Run(Handle(), count));
    }

    /** Points at many mileages. @throws Error as GetPositionAndAzimuthBatch() is false */
    void At(std::int32_t count, const PlaceColumns& columns) const {
        Require(count >= 0, KESTO_RECORD_COUNT_REFUSED);
        Require(columns.Run(Handle(), count));
    }

    /** Design heights of many places. @throws Error as GetHeightBatch() is false */
    void Heights(std::int32_t count, const HeightColumns& columns) const {
        Require(count >= 0, KESTO_RECORD_COUNT_REFUSED);
        Require(columns.Run(Handle(), count));
    }

    // Files written

    /** Saves the road as a project file; an earlier file stays whole until the new one is complete.
     *  @param path file path; ".road" is appended where it is missing
     *  @return a KestoStatus: 0, or as SaveProject() */
    std::int32_t Save(const std::string& path) const { return SaveProject(Handle(), path.c_str()); }

    /** Saves the road as a water project, without its section mileage index.
     *  @param path file path; ".watx" is appended where it is missing
     *  @return a KestoStatus: 0, or as SaveWaterProject() */
    std::int32_t SaveWater(const std::string& path) const { return SaveWaterProject(Handle(), path.c_str()); }

    /** Runs the design and writes alignment and profile as a LandXML 1.1 document.
     *  @return a KestoStatus: 0, or as ExportLandXMLFile() */
    std::int32_t ExportLandXml(const std::string& path) const { return ExportLandXMLFile(Handle(), path.c_str()); }

    /** Saves the stretch between two places as a road of its own.
     *  @param path       file path; ".road" is appended where it is missing
     *  @param start, end stake mileages (m)
     *  @param startOccurrence, endOccurrence which of the equal stake mileages, 0-based
     *  @return a KestoStatus: 0, or as SavePartProject() */
    std::int32_t SavePart(const std::string& path, double start, double end, std::int32_t startOccurrence = 0,
                          std::int32_t endOccurrence = 0) const {
        return SavePartProject(Handle(), path.c_str(), start, end, startOccurrence, endOccurrence);
    }

    /** The text of a place as the stake list writes it; empty where the mileage is no finite number.
     *  @param mileage    stake mileage (m)
     *  @param occurrence which of the equal stake mileages, 0-based */
    std::optional<std::string> FormatStake(double mileage, std::int32_t occurrence = 0) const {
        constexpr std::size_t longestNumber = 352;
        std::string text(std::char_traits<char>::length(GetMakeStakePerfix(Handle())) + longestNumber, '\0');
        const auto room = static_cast<std::int32_t>(text.size());
        const bool done = ::FormatStake(Handle(), mileage, occurrence, text.data(), room);
        text.resize(std::char_traits<char>::length(text.c_str()));
        return When(done, text);
    }

    /** The place on the centre line that a text names; empty where it names none. The occurrence is 1 for every later
     *  one. */
    std::optional<Location> ParseStake(const std::string& text) const {
        Location at;
        return When(::ParseStake(Handle(), text.c_str(), &at.mileage, &at.occurrence), at);
    }

    /** What the last opening skipped or doubted, in the order of the file. */
    std::vector<ReadingFinding> ReadingFindings() const {
        std::vector<ReadingFinding> findings;
        ReadingFinding finding{};
        while (GetReadingFinding(Handle(), static_cast<std::int32_t>(findings.size()), &finding)) {
            findings.push_back(finding);
        }
        return findings;
    }

    /** The line of the file that a record stood in when the road was opened; empty where it was not read.
     *  @param list  a KestoList
     *  @param index 0-based index of the record after the opening
     *  @param key   the side of plates, 2 * side + kind of change sections, 0 for all other lists */
    std::optional<std::int32_t> RecordLine(std::int32_t list, std::int32_t index, std::int32_t key = 0) const {
        std::int32_t line = 0;
        return When(GetRecordLine(Handle(), list, key, index, &line), line);
    }

    /** The content that Save() writes. @throws Error when memory runs out */
    std::string ToMemory() const {
        std::int64_t size = 0;
        std::string bytes;
        std::int32_t status = SaveProjectToMemory(Handle(), nullptr, 0, &size);
        if (status == KESTO_ARRAY_TOO_SMALL) {
            bytes.resize(static_cast<std::size_t>(size));
            status = SaveProjectToMemory(Handle(), bytes.data(), size, &size);
        }
        Require(status == KESTO_SUCCESS, status);
        return bytes;
    }

protected:
    /** @param made a handle that this object ends; null where the call that should have made it failed */
    explicit RoadQueries(RoadDesign* made) noexcept : handle(made) {}

    /** The value where it was found, else empty. */
    template <class Value>
    static std::optional<Value> When(bool found, const Value& value) {
        return found ? std::optional<Value>(value) : std::nullopt;
    }

    /** Throws Error with the status unless the condition holds. */
    static void Require(bool holds, std::int32_t status) {
        if (!holds) throw Error(status);
    }

    /** Throws the reason of the call that has just failed. A frozen road keeps none: of the batches only a missing
     * column is left to fail there. */
    void Require(bool succeeded) const {
        if (succeeded) return;
        const std::optional<Failure> failure = LastFailure();
        throw Error(failure ? failure->status : std::int32_t{KESTO_NULL_ARGUMENT});
    }

private:
    static constexpr double squareAngle = 90;  // degrees

    struct End {
        void operator()(RoadDesign* road) const noexcept { EndRoadDesign(road); }
    };

    template <class Record>
    std::vector<Record> Copies(std::int32_t(KESTO_CALL* count)(RoadDesign*),
                               bool(KESTO_CALL* get)(RoadDesign*, std::int32_t, Record*)) const {
        std::vector<Record> records(static_cast<std::size_t>(count(Handle())));
        for (std::size_t i = 0; i < records.size(); ++i) get(Handle(), static_cast<std::int32_t>(i), &records[i]);
        return records;
    }

    std::unique_ptr<RoadDesign, End> handle;
};

/** A road. Moves but does not copy; ended by its destructor. A moved-from road may only be assigned or destroyed. */
class Road : public RoadQueries {
public:
    // What changes the road behind the handle is not const.
    // NOLINTBEGIN(readability-make-member-function-const)

    /** An empty road with default settings. @throws std::bad_alloc */
    Road() : RoadQueries(StartRoadDesign()) {
        if (Handle() == nullptr) throw std::bad_alloc();
    }

    // Building a road

    /** Begins the horizontal alignment: drops every element there is and sets the road design mode to elements (1).
     *  @param x, y    start point (m)
     *  @param azimuth start azimuth (degrees)
     *  @param mileage stake mileage of the start (m)
     *  @throws Error when a number is not finite or memory runs out */
    Road& Start(double x, double y, double azimuth, double mileage = 0) {
        RequireFinite({x, y, azimuth, mileage});
        for (std::int32_t i = GetElementCount(Handle()); i-- > 0;) DeleteElement(Handle(), i);
        SetRoadDesignMode(Handle(), elementMode);
        SetStartMileage(Handle(), mileage);
        Require(SetStartInformation(Handle(), x, y, azimuth));
        return *this;
    }

    /** Appends a straight to the end of the last element.
     *  @param length length (m)
     *  @throws Error when there is no start, the length is not finite, or memory runs out */
    Road& Straight(double length) { return Append(straightType, Turn::Left, 0, 0, length); }

    /** Appends a circular arc, tangent to the last element.
     *  @param radius radius (m), above 0
     *  @param length arc length (m)
     *  @param turn   side to which it turns
     *  @throws Error as Straight(), and when the radius is not above 0 */
    Road& Arc(double radius, double length, Turn turn) {
        Require(radius > 0 && std::isfinite(radius), KESTO_ELEMENT_NOT_EVALUABLE);
        return Append(arcType, turn, radius, 0, length);
    }

    /** Appends a clothoid spiral, tangent to the last element.
     *  @param startRadius radius at its start (m), 0 for infinite
     *  @param endRadius   radius at its end (m), 0 for infinite
     *  @param length      length (m)
     *  @param turn        side to which it turns
     *  @throws Error as Straight(), and when a radius is negative or both are equal */
    Road& Spiral(double startRadius, double endRadius, double length, Turn turn) {
        Require(startRadius >= 0 && endRadius >= 0 && std::isfinite(startRadius + endRadius) &&
                    std::fabs(startRadius - endRadius) > 0,
                KESTO_ELEMENT_NOT_EVALUABLE);
        return Append(spiralType, turn, startRadius, endRadius, length);
    }

    /** Adds a broken chain: from here on the stakes count from another mileage. Takes effect with Design().
     *  @param back  stake mileage before the break (m)
     *  @param ahead stake mileage of the same point after it (m)
     *  @throws Error when a number is not finite, a break with this back mileage exists, or memory runs out */
    Road& BrokenChain(double back, double ahead) {
        RequireFinite({back, ahead});
        const ::BrokenChain chain{back, ahead};
        Require(AddBrokenChain(Handle(), &chain));
        return *this;
    }

    /** Adds a grade-change point with its curve. Add the elements and broken chains first: they tell where on the road
     *  the mileage lies.
     *  @param mileage    stake mileage (m)
     *  @param elevation  elevation (m)
     *  @param radius     radius of the vertical curve (m), 0 for none; the first and the last point have no curve
     *  @param occurrence which of the equal stake mileages, 0-based
     *  @throws Error when a number is not finite, a point at this place exists, or memory runs out */
    Road& GradePoint(double mileage, double elevation, double radius = 0, std::int32_t occurrence = 0) {
        RequireFinite({mileage, elevation, radius});
        VerticalCurve curve{};
        curve.startOccurrence = curve.endOccurrence = notSet;
        curve.mileage = mileage;
        curve.occurrence = occurrence;
        curve.elevation = elevation;
        curve.radius = radius;
        Require(AddVerticalCurve(Handle(), &curve));
        return *this;
    }

    /** Adds a plate to the standard section, outside the plates that its side has.
     *  @param side       side of the road
     *  @param width      horizontal width (m)
     *  @param crossSlope cross slope (per cent), positive when the outer edge is higher
     *  @param step       vertical step at its inner edge (m)
     *  @param name       shown, never interpreted; cut to 31 bytes, without blanks if it is to be saved whole
     *  @throws Error when a number is not finite or memory runs out */
    Road& Plate(Side side, double width, double crossSlope, double step = 0, const std::string& name = {}) {
        RequireFinite({width, crossSlope, step});
        SectionPlate plate{};
        plate.width = width;
        plate.crossSlope = crossSlope;
        plate.step = step;
        name.copy(plate.name, sizeof plate.name - 1);
        Require(AddStandardSectionPlate(Handle(), &plate, static_cast<std::int32_t>(side), atEnd));
        return *this;
    }

    /** Adds a change section: the plates of a side take other widths or cross slopes here. Add the elements, broken
     *  chains and plates first.
     *  @param side       side of the road
     *  @param what       what the values are
     *  @param mileage    stake mileage (m)
     *  @param values     one for each plate of the side, from the centre line outwards
     *  @param transition how the values of the stretch that ends here come to these
     *  @param occurrence which of the equal stake mileages, 0-based
     *  @throws Error when the mileage is not on the road, the number of values is not that of the plates, a change
     *          section is there already, a number is not finite, or memory runs out */
    Road& Change(Side side, ChangeOf what, double mileage, const std::vector<double>& values,
                 Transition transition = Transition::Linear, std::int32_t occurrence = 0) {
        for (const double value : values) RequireFinite({value});
        Require(AddChangeSectionList(
            Handle(), mileage, static_cast<std::int32_t>(side), static_cast<std::int32_t>(what), values.data(),
            static_cast<std::int32_t>(values.size()), occurrence, static_cast<std::int32_t>(transition)));
        return *this;
    }

    /** Stores the spacing of regular stakes (m), at least 1; 100 by default. */
    Road& StakeInterval(double interval) {
        SetMileageInterval(Handle(), interval);
        return *this;
    }

    /** Stores the text before stake mileages, "K" by default. */
    Road& StakePrefix(const std::string& prefix) {
        SetMakeStakePerfix(Handle(), prefix.c_str());
        return *this;
    }

    /** The design run: builds the chain, makes and names the stakes, derives the profile. Call it after building or
     *  editing and before queries. @return false: see DesignRoad() */
    bool Design() { return DesignRoad(Handle()); }

    /** Builds what a query would build, and nothing else. @return false: no road can be built, see LastFailure() */
    bool Build() { return MakeCurrent(Handle()); }

    /** Builds the element chain anew and keeps the stakes. @return false: see UpdateData() */
    bool Update() { return UpdateData(Handle()); }

    // Files read

    /** Opens a project file and runs the design.
     *  @param path file path ending in ".road"
     *  @return a KestoStatus: 0, or as OpenProject2() */
    std::int32_t Open(const std::string& path) { return OpenProject2(Handle(), path.c_str()); }

    /** Opens a water project. The road has to be built afterwards, by Design() or Update().
     *  @param path file path ending in ".watx"
     *  @return a KestoStatus: 0, or as OpenWaterProject() */
    std::int32_t OpenWater(const std::string& path) { return OpenWaterProject(Handle(), path.c_str()); }

    /** Opens the content of a project file and runs the design.
     *  @param bytes the content
     *  @return a KestoStatus: 0, or as OpenProjectFromMemory(), or the failure of the design run */
    std::int32_t FromMemory(const std::string& bytes) {
        const std::int32_t status =
            OpenProjectFromMemory(Handle(), bytes.data(), static_cast<std::int64_t>(bytes.size()));
        if (status != KESTO_SUCCESS || Design()) return status;
        const std::optional<Failure> failure = LastFailure();
        return failure ? failure->status : std::int32_t{KESTO_INTERNAL_ERROR};
    }

    // NOLINTEND(readability-make-member-function-const)

private:
    static constexpr std::int32_t elementMode = 1;
    static constexpr std::int32_t straightType = 1;
    static constexpr std::int32_t arcType = 2;
    static constexpr std::int32_t spiralType = 3;
    static constexpr std::int32_t notSet = -1;
    static constexpr std::int32_t atEnd = -1;

    static void RequireFinite(std::initializer_list<double> numbers) {
        for (const double number : numbers) Require(std::isfinite(number), KESTO_ARGUMENT_NOT_FINITE);
    }

    Position EndOf(const Element& element) const {
        Position end;
        Require(GetElementPositionAndAzimuth(Handle(), &element, element.length, &end.x, &end.y, &end.azimuth));
        return end;
    }

    Road& Append(std::int32_t type, Turn turn, double startRadius, double endRadius, double length) {
        RequireFinite({length});
        Element last{};
        Require(GetElement(Handle(), GetElementCount(Handle()) - 1, &last), KESTO_NO_START_ELEMENT);
        const Position start = EndOf(last);
        Element element{};
        element.type = type;
        element.turnDirection = static_cast<std::uint8_t>(turn);
        element.startX = start.x;
        element.startY = start.y;
        element.startAzimuth = start.azimuth;
        element.startRadius = startRadius;
        element.endRadius = endRadius;
        element.length = length;
        EndOf(element);  // what cannot be evaluated must not enter the road
        Require(AddElement(Handle(), &element, atEnd));
        SetRoadDesignMode(Handle(), elementMode);
        return *this;
    }
};

/** A copy of a road that any number of threads may ask at once; see FreezeRoad(). Moves but does not copy; the
 *  destructor ends it. A query without an answer gives an empty optional and leaves no reason: the status column of a
 *  batch tells it. */
class FrozenRoad : public RoadQueries {
public:
    /** Freezes a road as it stands. @throws Error when no road can be built or memory runs out */
    explicit FrozenRoad(const RoadQueries& road) : RoadQueries(FreezeRoad(road.Handle())) {
        if (Handle() != nullptr) return;
        const std::optional<Failure> failure = road.LastFailure();
        throw Error(failure ? failure->status : std::int32_t{KESTO_OUT_OF_MEMORY});
    }
};

}  // namespace kesto

#endif
