#include "cli/FileTable.h"

#include "analysis/Words.h"
#include "base/OnAllCores.h"
#include "base/VisibleText.h"
#include "cli/Console.h"
#include "cli/Document.h"

#include <algorithm>
#include <iomanip>
#include <iostream>
#include <map>
#include <span>
#include <tuple>

namespace cabslot {

namespace {

constexpr std::size_t longestName = 14; // a factory IR's

/// The reports, made on all processors; incomplete if interrupted.
std::vector<FileReport> inspectAll(std::span<const std::string> paths) {
    std::vector<FileReport> reports(paths.size());
    ProgressLine line;
    onAllCores(
        paths.size(), [&](std::size_t i) { reports[i] = inspectFile(paths[i]); },
        [&](std::size_t done) {
            line.show("inspected " + std::to_string(done) + " of " +
                      std::to_string(reports.size()) + " files");
            return !interrupted();
        });
    return reports;
}

/// Numbers the blocks that several files share, from 1 in the table's order.
class SameBlocks {
public:
    explicit SameBlocks(std::span<const FileReport> reports) {
        for (const FileReport& report : reports) {
            if (!report.refused)
                ++counts_[report.blockHash];
        }
    }

    /// 0 for a block that only one file has.
    std::size_t numberOf(const FileReport& report) {
        if (report.refused || counts_[report.blockHash] < 2)
            return 0;
        return numbers_.try_emplace(report.blockHash, numbers_.size() + 1).first->second;
    }

private:
    std::map<std::uint64_t, std::size_t> counts_;
    std::map<std::uint64_t, std::size_t> numbers_;
};

std::string padded(std::string text, std::size_t width) {
    const auto continues = [](char byte) {
        return (static_cast<unsigned char>(byte) & 0xC0) == 0x80;
    };
    const auto letters =
        text.size() - static_cast<std::size_t>(std::ranges::count_if(text, continues));
    return text.append(width - std::min(letters, width), ' ');
}

std::string lengthText(const FileReport& report) {
    const double milliseconds = static_cast<double>(report.heldFrames) * 1000 / report.rate;
    return fixedText(milliseconds, 1);
}

std::string levelText(std::optional<double> level) {
    return level ? fixedText(*level, 2) : "silent";
}

std::string findingNames(const FileReport& report) {
    std::string names;
    for (const Finding& finding : report.findings)
        names.append(names.empty() ? "" : ",").append(nameOf(finding.kind));
    return names.empty() ? "-" : names;
}

void printTable(std::span<const FileReport> reports) {
    std::cout << padded("name", longestName) << "   rate  bits       ms    peak     RMS  same  "
              << "findings  file\n";
    SameBlocks same(reports);
    for (const FileReport& report : reports) {
        std::cout << padded(report.title, longestName) << ' ';
        if (report.refused) {
            std::cout << " refused: " << report.whyRefused;
        } else {
            const std::size_t number = same.numberOf(report);
            std::cout << std::setw(6) << report.rate << std::setw(6) << report.bits << std::setw(9)
                      << lengthText(report) << std::setw(8) << levelText(report.peak)
                      << std::setw(8) << levelText(report.rms) << std::setw(6)
                      << (number == 0 ? "-" : "=" + std::to_string(number)) << "  "
                      << findingNames(report);
        }
        std::cout << "  " << visibleText(report.path) << '\n';
    }
}

Json jsonOf(const FileReport& report, std::size_t sameBlock) {
    if (report.refused)
        return {{"file", report.path}, {"refused", report.whyRefused}};
    Json json = {{"file", report.path}, {"refused", {}}};
    json.addAll(fieldsOf(report));
    json.add("same_block", sameBlock == 0 ? Json() : Json(sameBlock));
    return json;
}

/// Prints one file at a time: the whole JSON document in memory would be many times the table.
void printTableJson(std::span<const FileReport> reports) {
    std::cout << "{\n  \"version\": " << jsonVersion << ",\n  \"files\": [";
    SameBlocks same(reports);
    for (const FileReport& report : reports) {
        std::cout << (&report == reports.data() ? "\n" : ",\n")
                  << documentText(jsonOf(report, same.numberOf(report)));
    }
    std::cout << "\n  ]\n}\n";
}

} // namespace

void printReports(std::vector<FileReport> reports, bool json) {
    std::ranges::sort(reports, {},
                      [](const FileReport& report) { return std::tie(report.title, report.path); });
    json ? printTableJson(reports) : printTable(reports);
}

ExitStatus inspectFiles(const std::vector<std::string>& paths, bool json) {
    std::vector<FileReport> reports = inspectAll(paths);
    if (interrupted())
        return ExitStatus::interrupted;
    const auto refused = std::ranges::count(reports, true, &FileReport::refused);
    const std::string count = countText(reports.size(), "file");
    printReports(std::move(reports), json);
    if (refused == 0)
        return ExitStatus::done;
    complain(std::to_string(refused) + " of " + count + " refused");
    return ExitStatus::fileRefused;
}

} // namespace cabslot
