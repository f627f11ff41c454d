// Inspects many files on all processors and reports them in one table.
#pragma once

#include "cli/ExitStatus.h"
#include "cli/FileReport.h"

#include <string>
#include <vector>

namespace cabslot {

/// Prints the reports sorted by name, as a table or as one JSON document.
void printReports(std::vector<FileReport> reports, bool json);

/// Inspects the files, prints the results as a table or as one JSON document, and returns the exit
/// status.
ExitStatus inspectFiles(const std::vector<std::string>& paths, bool json);

} // namespace cabslot
