#include "alignment/chain_builder.hpp"

#include <algorithm>
#include <cmath>
#include <optional>

#include "alignment/element_generation.hpp"
#include "core/tolerances.hpp"
#include "geometry/element_cut.hpp"
#include "geometry/element_geometry.hpp"

namespace kesto {

namespace {

inline constexpr std::int32_t fewestElements = 2;

/// Hands out the broken chains in order; each acts on one element at most.
class BreakCursor {
public:
    explicit BreakCursor(std::span<const BrokenChain> chains) noexcept : rest(chains) {}

    /// The first break from the cursor on that lies on the element within tolerance; the cursor moves past it.
    std::optional<BrokenChain> Next(const Element& element) noexcept {
        const double start = element.startMileage;
        const double end = EndMileage(element);
        // The list ascends, so what lies before the element stands in front and what lies behind it at the back.
        auto chain = std::partition_point(rest.begin(), rest.end(), [&](const BrokenChain& it) {
            return !(start - it.backMileage < tolerance::mileage);
        });
        for (; chain != rest.end() && end - chain->backMileage > -tolerance::mileage; ++chain) {
            if (HoldsBreak(element, chain->backMileage)) {
                const BrokenChain found = *chain;
                rest = rest.subspan(static_cast<std::size_t>(chain - rest.begin()) + 1);
                return found;
            }
        }
        return std::nullopt;
    }

private:
    std::span<const BrokenChain> rest;
};

/// Cuts an element at a stake mileage. The element keeps the first piece.
/// @param rest out: the second piece, from the split point on; nothing where the remainder is a sliver
/// @return fails where the split point cannot be evaluated
Outcome Split(Element& element, double mileage, std::optional<Element>& rest) noexcept {
    const double first = mileage - element.startMileage;
    const double second = element.length - first;
    if (!(std::fabs(second) > tolerance::sliver)) {
        element.length = first;
        return {};
    }
    Element piece = element;
    piece.length = second;
    piece.flag = 0;
    if (IsType(element, ElementType::Spiral)) {
        piece.startRadius = element.endRadius = SplitRadius(element, first, second);
    }
    element.length = first;
    const Result<Position> split = Evaluate(element, first);
    if (!split) return split.failure();
    piece.startX = split->x;
    piece.startY = split->y;
    piece.startAzimuth = split->azimuth;
    rest = piece;
    return {};
}

/// The walk along the elements, from the start record on.
class ChainWalk {
public:
    ChainWalk(std::span<const BrokenChain> chains, double startMileage) noexcept
        : breaks(chains), nextStart(startMileage) {}

    /// Takes the next element and appends it, or its two or more pieces, to the chain.
    /// @return false where its length, its split point or a mileage on it is no finite number
    bool Take(Element element, CountedList<Element>& chain) {
        for (;;) {
            element.startMileage = nextStart;
            if (!std::isfinite(element.length)) return false;
            double jump = 0;
            std::optional<Element> rest;
            if (const std::optional<BrokenChain> found = breaks.Next(element)) {
                jump = found->aheadMileage - found->backMileage;
                if (std::fabs(element.startMileage - found->backMileage) > tolerance::splitAtStart &&
                    !Split(element, found->backMileage, rest)) {
                    return false;
                }
            }
            nextStart = element.startMileage + element.length + jump;
            totalLength += std::fabs(element.length);
            if (!std::isfinite(nextStart) || !std::isfinite(totalLength)) return false;
            chain.Insert(element);
            if (!rest) return true;
            element = *rest;
        }
    }

    double TotalLength() const noexcept { return totalLength; }

private:
    BreakCursor breaks;
    double nextStart;        // m: stake mileage at which the next element begins
    double totalLength = 0;  // m
};

Failure TooFew(const CountedList<Element>& elements) noexcept {
    Failure failure = FailLimit(KESTO_TOO_FEW_ELEMENTS, KESTO_LIMIT_RECORD_COUNT, elements.Count(), fewestElements);
    failure.list = KESTO_LIST_ELEMENTS;
    return failure;
}

/// Builds the road's chain from a list of elements, which may be the road's own.
Outcome BuildChainFrom(RoadDesign& road, const CountedList<Element>& elements) {
    road.totalLength = 0;
    const std::int32_t count = elements.Count();
    if (count < fewestElements) return TooFew(elements);
    if (!IsType(elements[0], ElementType::Start)) return FailRecord(KESTO_NO_START_ELEMENT, KESTO_LIST_ELEMENTS, 0);
    CountedList<Element> chain;
    chain.Reserve(static_cast<std::int64_t>(count) + road.brokenChains.Count());
    ChainWalk walk(road.brokenChains.Records(), road.settings.startMileage);
    for (std::int32_t i = 0; i < count; ++i) {
        if (!walk.Take(elements[i], chain)) return FailRecord(KESTO_ELEMENT_NOT_EVALUABLE, KESTO_LIST_ELEMENTS, i);
    }
    road.elements.Swap(chain);
    road.totalLength = walk.TotalLength();
    road.settings.startMileage = road.elements[1].startMileage;
    return {};
}

}  // namespace

bool HoldsBreak(const Element& element, double backMileage) noexcept {
    const double left = EndMileage(element) - backMileage;
    return element.startMileage - backMileage < tolerance::mileage &&
           (left > tolerance::mileage || std::fabs(left) < tolerance::mileage);
}

Failure TooFewElements(const RoadDesign& road) noexcept { return TooFew(road.elements); }

Outcome BuildChain(RoadDesign& road) { return BuildChainFrom(road, road.elements); }

Outcome MakeCurrent(RoadDesign& road) {
    road.stakes.Clear();
    road.totalLength = 0;
    if (static_cast<DesignMode>(road.settings.roadDesignMode) == DesignMode::Elements) return BuildChain(road);
    CountedList<Element> elements;
    if (Outcome generated = GenerateElements(road, elements); !generated) return generated;
    return BuildChainFrom(road, elements);
}

Outcome EnsureCurrent(const AskedRoad& asked) {
    const bool built = !(asked.road.totalLength < tolerance::builtLength);
    if (!built && asked.live != nullptr) return MakeCurrent(*asked.live);
    if (asked.road.elements.Count() == 0) return TooFewElements(asked.road);
    return {};
}

}  // namespace kesto
