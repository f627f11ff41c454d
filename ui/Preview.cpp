#include "ui/Preview.h"

#include "irfile/NameFromPath.h"
#include "prepare/Prepare.h"

namespace cabslot {

Preview previewOf(const QString& path, bool prepares) {
    const ReadIR read = readIR(path.toStdString(), {}, Extent::start);
    if (!read)
        return {std::nullopt, QString::fromStdString("It is refused: " + read.whyRefused + ".")};
    if (!prepares || read.ir.factory)
        return {summaryOf(read), {}};
    const PreparedIR prepared = prepare(read, {});
    std::string origin = summaryOf(read).origin + ". Prepared.";
    for (const std::string& sentence : prepared.steps)
        origin += " " + sentence;
    return {summaryOf(prepared.ir.block, shownName(prepared.ir), origin), {}};
}

bool isWavName(const QString& path) {
    return isWavName(path.toStdString());
}

} // namespace cabslot
