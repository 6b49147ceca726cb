#include "error_table.hpp"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <limits>

namespace accuracy {

namespace {

std::string Short(double number) {
    char text[32];
    std::snprintf(text, sizeof text, number > 0 ? "%.1e" : "%.0f", number);
    return text;
}

}  // namespace

void Errors::Add(double error, double bar) {
    if (std::isnan(error)) error = std::numeric_limits<double>::infinity();
    errors.push_back(error);
    worstShare = std::max(worstShare, error / bar);
}

std::string Errors::Row() const {
    constexpr std::size_t thousand = 1000;
    std::vector<double> sorted = errors;
    std::ranges::sort(sorted);
    const double kept = sorted[sorted.size() - 1 - sorted.size() / thousand];
    const char* const verdict = mustPass ? (Passed() ? "yes" : "NO") : "apart";
    return "| " + kind + " | " + std::to_string(errors.size()) + " | " + Short(sorted.back()) + " | " + Short(kept) +
           " | " + barText + " | " + Short(worstShare) + " | " + verdict + " |\n";
}

Errors& ErrorTable::Of(const std::string& kind, const std::string& bar, bool counts) {
    const auto found = std::ranges::find(kinds, kind, &Errors::Kind);
    return found != kinds.end() ? *found : kinds.emplace_back(kind, bar, counts);
}

bool ErrorTable::Passed() const {
    return !kinds.empty() && std::ranges::all_of(kinds, [](const Errors& it) { return it.Passed(); });
}

std::string ErrorTable::Text() const {
    std::string text =
        "| kind | cases | worst | 99.9 % | bar | worst / bar | passed |\n|---|--:|--:|--:|---|--:|---|\n";
    std::vector<std::string> questions;  // the first words of the kinds
    for (const Errors& it : kinds) {
        if (std::ranges::find(questions, it.Question()) == questions.end()) questions.push_back(it.Question());
    }
    for (const std::string& question : questions) {
        for (const Errors& it : kinds) text += it.Question() == question ? it.Row() : "";
    }
    return text;
}

}  // namespace accuracy
