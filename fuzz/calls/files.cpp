// The calls of the files, in a folder of their own.

#include <algorithm>

#include "call_run.hpp"
#include "saved_road.hpp"
#include "support/temporary_folder.hpp"

namespace kesto::fuzz {

namespace {

constexpr std::size_t longestName = 300;  // characters: more than a file system takes

const test::TemporaryFolder& Folder() {
    static const test::TemporaryFolder folder("kesto_fuzz_");
    return folder;
}

/// A path in the folder: mostly one that other calls use too, else a name of any bytes, the folder, or a missing one.
std::string PathFrom(Bytes& in) {
    const std::uint8_t kind = in.Byte();
    switch (kind < 200 ? kind % 4 : kind) {
        case 0: return Folder().At("road.road");
        case 1: return Folder().At("road.watx");
        case 2: return Folder().At("other.ROAD");
        case 3: return Folder().At("road.xml");
        case 200: return Folder().At("");
        case 201: return Folder().At("missing/road.road");
        case 202: return Folder().At(std::string(longestName, 'x'));
        case 203: return Folder().At("missing.road");
        default: break;
    }
    std::string name = in.Text();
    name.insert(name.begin(), 'x');  // never the folder's parent
    std::replace(name.begin(), name.end(), '/', '_');
    std::replace(name.begin(), name.end(), '\0', '_');
    return Folder().At(name + (kind % 2 == 0 ? ".road" : ""));
}

template <class Function>
void WithPath(CallRun& it, const Named<Function>& function) {
    const std::string path = PathFrom(it.in);
    it.File(function, it.OrNull(path.c_str()));
}

void Save(CallRun& it) { WithPath(it, KESTO_NAMED(SaveProject)); }
void Open(CallRun& it) { WithPath(it, KESTO_NAMED(OpenProject)); }
void OpenAndDesign(CallRun& it) { WithPath(it, KESTO_NAMED(OpenProject2)); }
void SaveWater(CallRun& it) { WithPath(it, KESTO_NAMED(SaveWaterProject)); }
void OpenWater(CallRun& it) { WithPath(it, KESTO_NAMED(OpenWaterProject)); }
void ExportXml(CallRun& it) { WithPath(it, KESTO_NAMED(ExportLandXMLFile)); }

/// What is saved of a part is a road that can be built. It has the settings of the whole, a wrong stake type as well,
/// so not every one can be designed.
void SavePart(CallRun& it) {
    const double start = it.in.Number(), end = it.in.Number();
    const std::int32_t startOccurrence = it.in.Whole(), endOccurrence = it.in.Whole();
    const std::string path = Folder().At("part.road");
    const std::int32_t status =
        it.File(KESTO_NAMED(SavePartProject), it.OrNull(path.c_str()), start, end, startOccurrence, endOccurrence);
    if (status != KESTO_SUCCESS) return;
    RoadDesign* const part = StartRoadDesign();
    Require(OpenProject(part, path.c_str()) == KESTO_SUCCESS && UpdateData(part), "a part that was saved can be built");
    EndRoadDesign(part);
}

void SaveToMemory(CallRun& it) {
    std::int64_t size = -1;
    if (it.in.Rarely()) {
        const std::int64_t capacity = it.in.Whole();
        char few[4];
        it.Ask(KESTO_NAMED(SaveProjectToMemory), it.OrNull(few), std::min<std::int64_t>(capacity, sizeof few),
               it.OrNull(&size));
    } else if (it.Road() != nullptr) {
        SaveProjectToMemory(it.Road(), nullptr, 0, &size);
        if (size < 0) return;
        it.savedText.assign(static_cast<std::size_t>(size), '\0');
        Require(KESTO_NAMED(SaveProjectToMemory)(it.Road(), it.savedText.data(), size, &size) == KESTO_SUCCESS,
                "what fits is saved");
        Require(it.savedText == SavedText(it.Road()), "a road saved twice gives one text");
    }
}

/// Every finding that is kept has a line and a reason, they stand in order, and so do the lines of elements.
void AskFindings(RoadDesign* road) {
    const std::int32_t count = KESTO_NAMED(GetReadingFindingCount)(road);
    ReadingFinding finding{};
    std::int32_t before = 0;
    std::int32_t index = 0;
    for (; KESTO_NAMED(GetReadingFinding)(road, index, &finding); ++index) {
        Require(finding.line >= before && finding.line > 0 && finding.reason > 0, "findings stand in order");
        before = finding.line;
    }
    Require(index == std::min(count, 1000), "a thousand findings are kept");
    std::int32_t line = 0;
    std::int32_t lineBefore = 0;
    for (index = 0; KESTO_NAMED(GetRecordLine)(road, KESTO_LIST_ELEMENTS, 0, index, &line); ++index) {
        Require(line > lineBefore, "elements stand as in the file");
        lineBefore = line;
    }
}

/// The text saved last, with some bytes changed.
void OpenFromMemory(CallRun& it) {
    std::string text = it.savedText.empty() ? "0 50 0 K\n\nElement\n" : it.savedText;
    for (int changes = it.in.Byte() % 4; changes > 0; --changes) {
        const std::size_t at = it.in.Raw<std::uint16_t>() % text.size();
        text[at] = static_cast<char>(it.in.Byte());
    }
    const std::int64_t size = it.in.Rarely() ? it.in.Whole() : static_cast<std::int64_t>(text.size());
    it.File(KESTO_NAMED(OpenProjectFromMemory), it.OrNull(text.data()),
            std::min(size, static_cast<std::int64_t>(text.size())));
    AskFindings(it.Road());
}

}  // namespace

void RemoveFiles() { Folder().Empty(); }

const CallGroup fileCalls{Save,      SavePart,  Open,         OpenAndDesign, OpenFromMemory,
                          SaveWater, OpenWater, SaveToMemory, ExportXml};

}  // namespace kesto::fuzz
