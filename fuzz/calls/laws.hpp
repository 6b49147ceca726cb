/// What holds for every call, whatever its arguments.
#pragma once

#include <optional>
#include <vector>

#include "call_run.hpp"

namespace kesto::fuzz {

/// A call that is about to be made.
struct Before {
    Before(const Call& call, RoadDesign* road, const std::vector<Argument>& arguments);

    std::optional<Failure> failure;
    std::vector<Argument> arguments;
    std::int32_t count;  // of the records that it is about
};

/// The result, the reason that is left, the counts of lists, and what is written.
void RequireLaws(const Call& call, RoadDesign* road, const Before& before, const Outcome& outcome,
                 const std::vector<Argument>& arguments);

/// A question has one answer: asked again, of a frozen copy, row by row where it is a batch, by a walk where an index
/// has found the foot.
void RequireOneAnswer(const Call& call, const RoadSlot& slot, const Before& before, const Outcome& outcome,
                      const std::vector<Argument>& arguments);

/// An edit of a frozen road fails and changes nothing.
void RequireFrozen(const Call& call, RoadDesign* frozen, std::vector<Argument> arguments);

}  // namespace kesto::fuzz
