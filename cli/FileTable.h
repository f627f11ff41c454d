// Many files at once: inspected on all processors, told in one table.
#pragma once

#include "cli/ExitStatus.h"
#include "cli/FileReport.h"

#include <string>
#include <vector>

namespace cabslot {

/// Prints the reports by name, as a table or as one JSON document.
void printReports(std::vector<FileReport> reports, bool json);

/// Inspects the files, prints what is to be told of them, as a table or as one JSON document, and
/// returns how the program ends.
ExitStatus inspectFiles(const std::vector<std::string>& paths, bool json);

} // namespace cabslot
