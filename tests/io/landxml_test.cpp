// LandXML files: valid by the published schema, and the same road when read back by another reader.
#include <clocale>
#include <cmath>
#include <cstdlib>
#include <limits>
#include <numbers>
#include <regex>

#include "support/folder_test.hpp"
#include "support/published_roads.hpp"
#include "support/xml_document.hpp"

namespace kesto::test {
namespace {

namespace fs = std::filesystem;

constexpr double pointDigits = 1e-6;     // m: six decimals, and what two roundings come to
constexpr double sixDigits = 5.0001e-6;  // of the number: the most that "%g" takes away
constexpr double infinite = std::numeric_limits<double>::infinity();

class LandXml : public FolderTest {
protected:
    /// The file's text with every date and time replaced.
    std::string Timeless(const std::string& name) const {
        return std::regex_replace(Content(name), std::regex(R"(\d{4}-\d\d-\d\d(T\d\d:\d\d:\d\d)?|\d\d:\d\d:\d\d)"),
                                  "*");
    }

    /// Whether the published schema, LandXML-1.1.xsd in the folder `schemas`, accepts a file; what is wrong is in
    /// "log".
    bool IsValid(const std::string& name) const {
        const std::string command = "xmllint --nonet --noout --schema '" + std::string(schemas) +
                                    "/LandXML-1.1.xsd' '" + At(name) + "' 2>'" + At("log") + "'";
        return std::system(command.c_str()) == 0;
    }

    /// Exports a road, validates the file where the schema is at hand, and reads it.
    XmlNode Export(RoadDesign* road) const {
        EXPECT_EQ(ExportLandXMLFile(road, At("it.xml").c_str()), KESTO_SUCCESS) << LastFailure(road).record;
        EXPECT_TRUE(schemas == nullptr || IsValid("it.xml")) << Content("log");
        return ReadXml(At("it.xml")).Only("Alignments").Only("Alignment");
    }

    const char* const schemas = std::getenv("KESTO_LANDXML_SCHEMAS");
};

void ExpectAttribute(const XmlNode& node, const char* name, double expected) {
    if (std::isinf(expected)) {
        EXPECT_EQ(node.attributes.at(name), "INF") << name;
    } else {
        EXPECT_NEAR(node.Number(name), expected, std::fabs(expected) * sixDigits + 1e-9) << name;
    }
}

void ExpectPoint(const XmlNode& node, const Point& expected) {
    EXPECT_NEAR(node.Pair().first, expected.x, pointDigits) << node.name;
    EXPECT_NEAR(node.Pair().second, expected.y, pointDigits) << node.name;
}

double Curvature(double radius) { return radius < 1e-7 ? 0 : 1 / radius; }

/// Distance of a point from the line through another one (m), positive on the right.
double Beside(const XmlNode& point, const Point& line) {
    const double azimuth = line.azimuth * (std::numbers::pi / 180);
    return (point.Pair().second - line.y) * std::cos(azimuth) - (point.Pair().first - line.x) * std::sin(azimuth);
}

double Along(const XmlNode& point, const Point& line) {
    return Beside(point, {true, line.x, line.y, line.azimuth - 90});
}

void ExpectElement(RoadDesign* road, const XmlNode& node, const Element& element) {
    const Point start{true, element.startX, element.startY, element.startAzimuth};
    Point end;
    ASSERT_TRUE(GetElementPositionAndAzimuth(road, &element, element.length, &end.x, &end.y, &end.azimuth));
    const double startRadius = element.startRadius;
    const double endRadius = element.endRadius;
    const double length = element.length;
    ExpectAttribute(node, "length", length);
    ExpectPoint(node.Only("Start"), start);
    ExpectPoint(node.Only("End"), end);
    if (node.name == "Line") return ExpectAttribute(node, "dir", start.azimuth);
    ExpectAttribute(node, "dirStart", start.azimuth);
    ExpectAttribute(node, "dirEnd", end.azimuth);
    EXPECT_EQ(node.attributes.at("rot"), element.turnDirection == 0 ? "ccw" : "cw");
    EXPECT_NEAR(node.Number("chord"), std::hypot(end.x - start.x, end.y - start.y), length * sixDigits + 1e-8);
    const double side = element.turnDirection == 0 ? -1 : 1;
    if (node.name == "Curve") {
        ExpectAttribute(node, "radius", startRadius);
        ExpectAttribute(node, "delta", length / startRadius * (180 / std::numbers::pi));
        EXPECT_NEAR(Beside(node.Only("Center"), start), side * startRadius, 2 * pointDigits);
        EXPECT_NEAR(Beside(node.Only("Center"), end), side * startRadius, 2 * pointDigits);
        return;
    }
    const double from = Curvature(startRadius);
    const double to = Curvature(endRadius);
    ExpectAttribute(node, "radiusStart", from == 0 ? infinite : startRadius);
    ExpectAttribute(node, "radiusEnd", to == 0 ? infinite : endRadius);
    ExpectAttribute(node, "constant", std::sqrt(length / std::fabs(from - to)));
    ExpectAttribute(node, "theta", length * (from + to) / 2 * (180 / std::numbers::pi));
    const XmlNode meeting = node.Only("PI");
    EXPECT_NEAR(Beside(meeting, start), 0, 2 * pointDigits);
    EXPECT_NEAR(Beside(meeting, end), 0, 2 * pointDigits);
    EXPECT_GT(Along(meeting, start), 0);
    EXPECT_LT(Along(meeting, end), 0);
}

void ExpectProfile(RoadDesign* road, const XmlNode& profile) {
    const std::vector<VerticalCurve> curves = Curves(road);
    ASSERT_EQ(profile.children.size(), curves.size());
    for (std::size_t i = 0; i < curves.size(); ++i) {
        SCOPED_TRACE("grade-change point " + std::to_string(i));
        const VerticalCurve& curve = curves[i];
        const XmlNode& node = profile.children[i];
        const double place = Continuous(road, curve.mileage, curve.occurrence).value_or(curve.mileage);
        EXPECT_NEAR(node.Pair().first, place, pointDigits);
        EXPECT_NEAR(node.Pair().second, curve.elevation, pointDigits);
        const auto start = Continuous(road, curve.startMileage, curve.startOccurrence);
        const auto end = Continuous(road, curve.endMileage, curve.endOccurrence);
        const bool inside = i > 0 && i + 1 < curves.size();
        if (inside && start && end && *end - *start >= 1e-7) {
            EXPECT_EQ(node.name, "ParaCurve");
            ExpectAttribute(node, "length", *end - *start);
        } else {
            EXPECT_EQ(node.name, "PVI");
        }
    }
}

/// Every broken chain that acts has its equation, on a road that only rises.
void ExpectEquations(RoadDesign* road, const XmlNode& alignment) {
    const std::vector<BrokenChain> chains = Chains(road);
    const std::vector<XmlNode> equations = alignment.All("StaEquation");
    ASSERT_EQ(equations.size(), chains.size());
    for (std::size_t i = 0; i < chains.size(); ++i) {
        ExpectAttribute(equations[i], "staBack", chains[i].backMileage);
        ExpectAttribute(equations[i], "staAhead", chains[i].aheadMileage);
        EXPECT_EQ(equations[i].attributes.at("staIncrement"), "increasing");
        const double place = equations[i].Number("staInternal");
        const auto off = [&](std::int32_t occurrence) {
            return std::fabs(Continuous(road, chains[i].aheadMileage, occurrence).value_or(infinite) - place);
        };
        EXPECT_LE(std::min(off(0), off(1)), std::fabs(place) * sixDigits);
    }
}

/// Every element, equation and grade-change point of a designed road.
void ExpectSame(RoadDesign* road, const XmlNode& alignment) {
    double start = 0;
    GetRoadMileage(road, &start);
    double length = 0;
    std::size_t written = 0;
    const XmlNode geometry = alignment.Only("CoordGeom");
    for (const Element& element : Elements(road)) {
        if (element.type == 0) continue;
        SCOPED_TRACE("element " + std::to_string(written));
        ASSERT_LT(written, geometry.children.size());
        const XmlNode& node = geometry.children[written++];
        const char* const kinds[] = {"", "Line", "Curve", "Spiral"};
        EXPECT_EQ(node.name, kinds[element.type]);
        ExpectElement(road, node, element);
        length += std::fabs(element.length);
    }
    EXPECT_EQ(written, geometry.children.size());
    ExpectAttribute(alignment, "length", length);
    ExpectAttribute(alignment, "staStart", start);
    ExpectEquations(road, alignment);
    ExpectProfile(road, alignment.Only("Profile").Only("ProfAlign"));
}

TEST_F(LandXml, TheSchemaRefusesWhatIsNoLandXml) {
    if (schemas == nullptr) GTEST_SKIP() << "no document is validated: KESTO_LANDXML_SCHEMAS names no folder";
    Export(MakeRoad({Straight(10)}));
    std::string text = Content("it.xml");
    text.replace(text.find("<Line dir="), 5, "<Lime");
    text.replace(text.find("</Line>"), 7, "</Lime>");
    std::ofstream(At("lime.xml"), std::ios::binary) << text;
    EXPECT_FALSE(IsValid("lime.xml"));
    EXPECT_NE(Content("log").find("Lime"), std::string::npos) << Content("log");
}

TEST_F(LandXml, SampleRoadsAndPublishedAlignmentsComeBack) {
    int roads = 0;
    for (const auto& entry : fs::directory_iterator(KESTO_SAMPLE_ROADS)) {
        if (entry.path().extension() != ".road") continue;
        SCOPED_TRACE(entry.path().string());
        const Road road;
        ASSERT_EQ(OpenProject2(road, entry.path().string().c_str()), KESTO_SUCCESS);
        ExpectSame(road, Export(road));
        ++roads;
    }
    EXPECT_GE(roads, 6);
    for (const std::string& name : DataSetNames()) {
        const DataSet data = Load(name);
        if (!data.chained) continue;
        for (const std::int32_t mode : {0, 1}) {
            SCOPED_TRACE(name + ", curve mode " + std::to_string(mode));
            const Road road = Design(data, mode);
            ExpectSame(road, Export(road));
            ++roads;
        }
    }
    EXPECT_GE(roads, 6 + 2 * 9);
    for (const auto& entry : fs::directory_iterator(KESTO_TEST_DATA)) {
        if (!fs::exists(entry.path() / "intersections.csv")) continue;
        SCOPED_TRACE(entry.path().string());
        const Road road;
        for (const Row& row : ReadCsv((entry.path() / "intersections.csv").string())) {
            Intersection point{};
            point.x = row.Number("x");
            point.y = row.Number("y");
            point.radius = row.Number("radius");
            point.spiralIn = row.Number("spiral_in");
            point.spiralOut = row.Number("spiral_out");
            ASSERT_TRUE(AddIntersection(road, &point, -1));
        }
        ExpectSame(road, Export(road));
        ++roads;
    }
    EXPECT_GE(roads, 6 + 2 * 9 + 3);
}

TEST_F(LandXml, TheDocumentIsWrittenAsToldAttributeByAttribute) {
    const Road road = MakeRoad({Straight(100), Arc(right, 100, 50 * std::numbers::pi), Spiral(left, 0, 1000, 10)},
                               {.x = 1000, .y = 2000, .mileage = 500});
    AddChain(road, 550, 1550);
    AddGradePoints(road, {GradePoint(500, 10), GradePoint(1600, 12, 1000), GradePoint(1650, 8)});
    Export(road);
    const std::string expected =
        R"(<LandXML xmlns="http://www.landxml.org/schema/LandXML-1.1" )"
        R"(xmlns:xsi="http://www.w3.org/2001/XMLSchema-instance" )"
        R"(xsi:schemaLocation="http://www.landxml.org/schema/LandXML-1.1 )"
        R"(http://www.landxml.org/schema/LandXML-1.1/LandXML-1.1.xsd" )"
        R"(version="1.1" readOnly="0" LandXMLId="0" date="*" time="*">
    <Units>
        <Metric areaUnit="squareMeter" linearUnit="meter" volumeUnit="cubicMeter" temperatureUnit="celsius" )"
        R"(pressureUnit="milliBars" angularUnit="decimal degrees" directionUnit="decimal degrees" />
    </Units>
    <Project name="Road Design" />
    <Application name="Kesto Road Design" desc="LandXML file created using TinyXML" manufacturer="TinyXML Team" )"
        R"(version="1.0" manufacturerURL="http://www.grinninglizard.com/tinyxml/" timeStamp="*" />
    <Alignments>
        <Alignment name="Alignment" length="267.08" staStart="500" desc="Plan Curve Design">
            <CoordGeom>
                <Line dir="0" length="50">
                    <Start>1000.000000 2000.000000</Start>
                    <End>1050.000000 2000.000000</End>
                </Line>
                <Line dir="0" length="50">
                    <Start>1050.000000 2000.000000</Start>
                    <End>1100.000000 2000.000000</End>
                </Line>
                <Curve length="157.08" radius="100" crvType="arc" rot="cw" chord="141.421" delta="90" dirStart="0" dirEnd="90">
                    <Start>1100.000000 2000.000000</Start>
                    <End>1200.000000 2100.000000</End>
                    <Center>1100.000000 2100.000000</Center>
                </Curve>
                <Spiral spiType="clothoid" length="10" radiusStart="INF" radiusEnd="1000" rot="ccw" chord="9.99999" )"
        R"(constant="100" dirStart="90" dirEnd="89.7135" theta="0.286479">
                    <Start>1200.000000 2100.000000</Start>
                    <PI>1200.000000 2106.666675</PI>
                    <End>1200.016667 2109.999975</End>
                </Spiral>
            </CoordGeom>
            <StaEquation staAhead="1550" staBack="550" staInternal="550" staIncrement="increasing" />
            <Profile name="Profile Name">
                <ProfAlign name="VerticalCurve">
                    <PVI>500.000000 10.000000</PVI>
                    <ParaCurve length="100">600.000000 12.000000</ParaCurve>
                    <PVI>650.000000 8.000000</PVI>
                </ProfAlign>
            </Profile>
        </Alignment>
    </Alignments>
</LandXML>
)";
    EXPECT_EQ(Timeless("it.xml"), expected);
    const XmlNode root = ReadXml(At("it.xml"));
    EXPECT_EQ(root.attributes.at("date") + "T" + root.attributes.at("time"),
              root.Only("Application").attributes.at("timeStamp"));
}

TEST_F(LandXml, FallingMileagesAreWrittenFromTheirLowerEnd) {
    // North to (100, 0), then onwards on elements whose tangents point back: their mileages fall.
    std::vector<Element> elements{Straight(100), Arc(right, 200, -50), Spiral(left, 300, 0, -60), Straight(40)};
    for (std::size_t i = 1; i < 3; ++i) elements[i].startAzimuth = 180;
    const Road road = MakeRoad({elements[0]});
    for (std::size_t i = 1; i < 4; ++i) ASSERT_TRUE(AddElement(road, &elements[i], -1));
    const XmlNode alignment = Export(road);
    const auto written = alignment.Only("CoordGeom").children;
    ASSERT_EQ(written.size(), 4U);
    for (std::size_t i : {0U, 3U}) ExpectElement(road, written[i], Elements(road)[i + 1]);
    // A quarter of a radian to the right about (100, -200), southwards when the straight's end is reached: the lower
    // mileage stands that angle before it.
    const XmlNode& arc = written[1];
    EXPECT_NEAR(arc.Only("Start").Pair().first, 100 + 200 * std::sin(0.25), pointDigits);
    EXPECT_NEAR(arc.Only("Start").Pair().second, 200 * std::cos(0.25) - 200, pointDigits);
    EXPECT_NEAR(arc.Only("End").Pair().first, 100, pointDigits);
    EXPECT_NEAR(arc.Only("End").Pair().second, 0, pointDigits);
    EXPECT_NEAR(arc.Only("Center").Pair().first, 100, pointDigits);
    EXPECT_NEAR(arc.Only("Center").Pair().second, -200, pointDigits);
    ExpectAttribute(arc, "dirStart", 180 - 0.25 * (180 / std::numbers::pi));
    ExpectAttribute(arc, "dirEnd", 180);
    EXPECT_EQ(arc.attributes.at("rot"), "cw");
    // 60 m of spiral from 300 m to straight, told from its straight end; it turns by 60 / (2 * 300).
    const XmlNode& spiral = written[2];
    EXPECT_EQ(spiral.attributes.at("radiusStart"), "INF");
    ExpectAttribute(spiral, "radiusEnd", 300);
    ExpectAttribute(spiral, "length", 60);
    ExpectAttribute(spiral, "theta", 0.1 * (180 / std::numbers::pi));
    ExpectAttribute(spiral, "constant", std::sqrt(60.0 * 300));
    const auto equations = alignment.All("StaEquation");
    ASSERT_EQ(equations.size(), 2U);
    const double figures[2][3] = {{100, 100, 100}, {-10, -10, 210}};
    for (std::size_t i = 0; i < 2; ++i) {
        ExpectAttribute(equations[i], "staBack", figures[i][0]);
        ExpectAttribute(equations[i], "staAhead", figures[i][1]);
        ExpectAttribute(equations[i], "staInternal", figures[i][2]);
        EXPECT_EQ(equations[i].attributes.at("staIncrement"), i == 0 ? "decreasing" : "increasing");
    }
}

TEST_F(LandXml, EquationsStandWhereChainsAct) {
    const struct {
        BrokenChain chain;
        const char* start;
        std::vector<const char*> equation;  // back, ahead, internal
    } cases[] = {
        {{0, 10}, "10", {}},    // moves the start itself
        {{100, 900}, "0", {}},  // at the road's end
        {{60, 60}, "0", {}},    // no jump
        {{700, 800}, "0", {}},  // off the road
        {{60, 20}, "0", {"60", "20", "60"}},
    };
    for (const auto& it : cases) {
        const Road road = MakeRoad({Straight(40), Straight(60)});
        AddChain(road, it.chain.backMileage, it.chain.aheadMileage);
        const XmlNode alignment = Export(road);
        EXPECT_EQ(alignment.attributes.at("staStart"), it.start);
        std::vector<std::string> told;
        for (const XmlNode& node : alignment.All("StaEquation")) {
            for (const char* name : {"staBack", "staAhead", "staInternal"}) told.push_back(node.attributes.at(name));
        }
        EXPECT_EQ(told, std::vector<std::string>(it.equation.begin(), it.equation.end())) << it.chain.backMileage;
    }
}

TEST_F(LandXml, WhatHasNoShapeStaysValid) {
    const Road road = MakeRoad({Straight(10), Spiral(left, 0, 0, 50), Spiral(right, 5, 5, 0), Arc(left, 0, 20)});
    const auto written = Export(road).Only("CoordGeom").children;
    ASSERT_EQ(written.size(), 4U);
    EXPECT_EQ(written[1].Only("PI").text, written[1].Only("End").text);
    EXPECT_EQ(written[1].attributes.at("constant"), "INF");
    EXPECT_EQ(written[2].attributes.at("constant"), "0");
    EXPECT_EQ(written[3].name, "Line") << "an arc without a radius is a straight";
    const Road plain = MakeRoad({Straight(10)});
    EXPECT_TRUE(Export(plain).Only("Profile").Only("ProfAlign").children.empty());
}

TEST_F(LandXml, EveryLocaleAndEveryNameGiveTheSameDocument) {
    const std::string sample = std::string(KESTO_SAMPLE_ROADS) + "/sncf-san1-xd.road";
    const Road road;
    ASSERT_EQ(OpenProject2(road, sample.c_str()), KESTO_SUCCESS);
    Export(road);
    const std::string plain = Timeless("it.xml");
    for (const char* prefix : {"\xE9\x80\xFF", "]]><&\"'", "\x01\x1F\x7F", "\xEF\xBF\xBE"}) {
        SetMakeStakePerfix(road, prefix);
        Intersection hostile{};
        std::copy_n("<\x02\xFF&", 5, hostile.name);
        ASSERT_TRUE(AddIntersection(road, &hostile, -1));
        Export(road);
        EXPECT_EQ(Timeless("it.xml"), plain);
    }
    // A locale with a decimal comma, made here so that the test does not hang on what is installed.
    const std::string make = "localedef -f UTF-8 -i de_DE '" + At("de_DE.UTF-8") + "'";
    ASSERT_EQ(std::system(make.c_str()), 0);
    ASSERT_EQ(setenv("LOCPATH", folder.c_str(), 1), 0);
    ASSERT_NE(std::setlocale(LC_ALL, "de_DE.UTF-8"), nullptr);
    char half[8];
    std::snprintf(half, sizeof(half), "%g", 0.5);
    ASSERT_STREQ(half, "0,5");
    const std::int32_t status = ExportLandXMLFile(road, At("comma.xml").c_str());
    std::setlocale(LC_ALL, "C");
    EXPECT_EQ(status, KESTO_SUCCESS);
    EXPECT_EQ(Timeless("comma.xml"), plain);
}

TEST_F(LandXml, FailuresLeaveTheEarlierFile) {
    Write("it.xml", "earlier");
    const Road good = MakeRoad({Straight(10)});
    EXPECT_EQ(ExportLandXMLFile(good, ""), KESTO_FILE_NOT_WRITTEN);
    const Road empty;
    EXPECT_EQ(ExportLandXMLFile(empty, At("it.xml").c_str()), KESTO_TOO_FEW_ELEMENTS);
    const Road mode = MakeRoad({Straight(10)});
    SetRoadDesignMode(mode, 9);
    EXPECT_EQ(ExportLandXMLFile(mode, At("it.xml").c_str()), KESTO_UNKNOWN_DESIGN_MODE);
    const Road equal = MakeRoad({Straight(10), Spiral(left, 70, 70, 5)});
    EXPECT_EQ(ExportLandXMLFile(equal, At("it.xml").c_str()), KESTO_ELEMENT_NOT_EVALUABLE);
    AddGradePoints(good, {GradePoint(0, 1), GradePoint(5, std::nan(""))});
    EXPECT_EQ(ExportLandXMLFile(good, At("it.xml").c_str()), KESTO_RESULT_NOT_FINITE);
    EXPECT_EQ(LastFailure(good).record, 1);
    for (const double radius : {infinite, std::nan("")}) {
        const Road curved = MakeRoad({Straight(10)});
        AddGradePoints(curved, {GradePoint(0, 1), GradePoint(5, 2, radius), GradePoint(9, 1)});
        EXPECT_EQ(ExportLandXMLFile(curved, At("it.xml").c_str()), KESTO_RESULT_NOT_FINITE) << radius;
        EXPECT_EQ(LastFailure(curved).record, 1);
    }
    EXPECT_EQ(Content("it.xml"), "earlier");
}

}  // namespace
}  // namespace kesto::test
