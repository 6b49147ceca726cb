#include "exchange/landxml.hpp"

#include <array>

#include "design/design_run.hpp"
#include "exchange/landxml_alignment.hpp"
#include "exchange/xml_tree.hpp"
#include "io/safe_file.hpp"

namespace kesto {

namespace {

inline constexpr const char* namespaceUri = "http://www.landxml.org/schema/LandXML-1.1";
inline constexpr const char* schemaPlace =
    "http://www.landxml.org/schema/LandXML-1.1 http://www.landxml.org/schema/LandXML-1.1/LandXML-1.1.xsd";
inline constexpr const char* instanceUri = "http://www.w3.org/2001/XMLSchema-instance";
inline constexpr const char* tinyXmlAddress = "http://www.grinninglizard.com/tinyxml/";

inline constexpr std::size_t longestTime = 32;  // bytes

std::string TimeText(const std::tm& time, const char* format) {
    std::array<char, longestTime> text{};
    return {text.data(), std::strftime(text.data(), text.size(), format, &time)};
}

std::tm LocalTime() noexcept {
    const std::time_t now = std::time(nullptr);
    std::tm local{};
#if defined(_WIN32)
    localtime_s(&local, &now);
#else
    localtime_r(&now, &local);
#endif
    return local;
}

void WriteHead(const XmlElement& root, const std::tm& time) {
    const std::string now = TimeText(time, "%Y-%m-%d %H:%M:%S");
    const std::size_t blank = now.find(' ');
    root.Set("xmlns", namespaceUri)
        .Set("xmlns:xsi", instanceUri)
        .Set("xsi:schemaLocation", schemaPlace)
        .Set("version", "1.1")
        .Set("readOnly", "0")
        .Set("LandXMLId", "0")
        .Set("date", now.substr(0, blank).c_str())
        .Set("time", now.substr(blank + 1).c_str());
    root.Child("Units")
        .Child("Metric")
        .Set("areaUnit", "squareMeter")
        .Set("linearUnit", "meter")
        .Set("volumeUnit", "cubicMeter")
        .Set("temperatureUnit", "celsius")
        .Set("pressureUnit", "milliBars")
        .Set("angularUnit", "decimal degrees")
        .Set("directionUnit", "decimal degrees");
    root.Child("Project").Set("name", "Road Design");
    root.Child("Application")
        .Set("name", "Kesto Road Design")
        .Set("desc", "LandXML file created using TinyXML")
        .Set("manufacturer", "TinyXML Team")
        .Set("version", "1.0")
        .Set("manufacturerURL", tinyXmlAddress)
        .Set("timeStamp", TimeText(time, "%Y-%m-%dT%H:%M:%S").c_str());
}

}  // namespace

Result<std::string> FormatLandXml(RoadDesign& road, const std::tm& time) {
    const XmlTree tree("LandXML");
    WriteHead(tree.Root(), time);
    if (const Outcome written = WriteAlignment(road, tree.Root().Child("Alignments")); !written) {
        return written.failure();
    }
    return tree.Text();
}

Outcome ExportLandXml(RoadDesign& road, const char* path) {
    if (Outcome designed = RunDesign(road); !designed) return designed;
    const Result<std::string> text = FormatLandXml(road, LocalTime());
    if (!text) return text.failure();
    return WriteWholeFile(path, *text);
}

}  // namespace kesto
