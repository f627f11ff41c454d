#include "cli/CompareReport.h"

#include "analysis/Plots.h"
#include "analysis/Words.h"
#include "base/PathText.h"
#include "base/VisibleText.h"

#include <cmath>
#include <iomanip>
#include <iostream>

namespace cabslot {

namespace {

constexpr int labelWidth = 10; // as in the report on one file

std::string signedText(double decibels) {
    const std::string number = fixedText(decibels, 1);
    return (number.front() == '-' || number == "0.0" ? "" : "+") + number + " dB";
}

std::string hertzText(double hertz) {
    return hertz < 1000 ? fixedText(hertz, hertz < 50 ? 1 : 0) + " Hz"
                        : fixedText(hertz / 1000, 0) + " kHz";
}

std::string shiftText(const Alignment& alignment) {
    if (!alignment.isClear)
        return "not known: no clear match";
    if (alignment.shift == 0)
        return "none";
    return fixedText(std::abs(alignment.shift) * 1000 / pointsPerSecond, 2) + " ms " +
           (alignment.shift < 0 ? "earlier" : "later") + " (" +
           fixedText(std::abs(alignment.shift), 2) + " points)";
}

} // namespace

double toTwoDecimals(double number) {
    return std::round(number * 100) / 100 + 0.0; // no -0
}

Json alignmentFields(const Alignment& alignment) {
    Json fields = {{"match", alignment.isClear}, {"likeness", toTwoDecimals(alignment.likeness)}};
    if (!alignment.isClear)
        return fields;
    fields.add("shift_points", toTwoDecimals(alignment.shift));
    fields.add("shift_ms", std::round(alignment.shift * 1e6 / pointsPerSecond) / 1000);
    fields.add("polarity", alignment.isOpposite ? "opposite" : "same");
    return fields;
}

CompareReport::CompareReport(const IR& first, const IR& second)
    : first_(samplesOf(first.block)), second_(samplesOf(second.block)),
      name_(lastPart(first.source)), otherPath_(second.source),
      comparison_(compare(first_, second_)) {}

std::vector<CompareReport::Row> CompareReport::rows() const {
    if (!comparison_)
        return {{"silent", "there is nothing to compare"}};
    const Alignment& alignment = comparison_->alignment;
    std::string differences;
    for (std::size_t i = 0; i < octaves.size(); ++i)
        differences += (i > 0 ? ", " : "") + hertzText(octaves[i]) + " " +
                       signedText(comparison_->differences[i]);
    const char* const opposite = alignment.isOpposite ? "opposite" : "the same";
    return {{"level", signedText(comparison_->level)},
            {"octaves", differences},
            {"shift", shiftText(alignment)},
            {"polarity", alignment.isClear ? opposite : "not known"},
            {"null", residueText(comparison_->residue)}};
}

void CompareReport::print() const {
    std::cout << "\nAgainst it, " << visibleText(otherPath_) << ":\n";
    for (const Row& row : rows())
        std::cout << std::left << std::setw(labelWidth) << row.label << row.text << '\n';
}

Json CompareReport::fields() const {
    Json fields = {{"file", otherPath_}};
    if (!comparison_)
        return fields;
    fields.add("level_db", toTwoDecimals(comparison_->level));
    Json::List differences;
    for (std::size_t i = 0; i < octaves.size(); ++i)
        differences.push_back(
            {{"hz", octaves[i]}, {"difference_db", toTwoDecimals(comparison_->differences[i])}});
    fields.add("octaves", differences);
    fields.addAll(alignmentFields(comparison_->alignment));
    const double residue = comparison_->residue;
    fields.add("residue_db", residue > quietest ? Json(toTwoDecimals(residue)) : Json());
    fields.add("nulls", residue <= nullResidue);
    return fields;
}

Picture CompareReport::page() const {
    const Response first(first_);
    const Response second(second_);
    const std::string other(lastPart(otherPath_));
    const Curve curves[] = {
        {.response = &second, .name = other, .ink = Ink::other, .style = LineStyle::dashed},
        {.response = &first, .name = name_}};
    std::vector<std::string> told = {other + ", compared with " + name_ + ":"};
    for (const Row& row : rows())
        told.push_back(std::string(row.label) + ": " + row.text);
    return responsesPage(name_ + " and " + other, told, nullptr, curves);
}

} // namespace cabslot
