#include "ui/Preview.h"

#include "irfile/NameFromPath.h"
#include "prepare/Prepare.h"

namespace cabslot {

Preview previewOf(const Choice& choice, Extent extent) {
    const ReadIR read = readIR(choice.path.toStdString(), {}, extent);
    if (!read)
        return {.whyNot = QString::fromStdString("It is refused: " + read.whyRefused + ".")};
    if (!choice.prepares || read.ir.factory)
        return {.summary = summaryOf(read), .ir = read.ir};
    const PreparedIR prepared = prepare(read, {});
    std::string origin = summaryOf(read).origin + ". Prepared.";
    for (const std::string& sentence : prepared.steps)
        origin += " " + sentence;
    return {.summary = summaryOf(prepared.ir.block, shownName(prepared.ir), origin),
            .ir = prepared.ir};
}

bool isWavName(const QString& path) {
    return isWavName(path.toStdString());
}

} // namespace cabslot
