#include "ui/Preview.h"

#include "irfile/NameFromPath.h"
#include "prepare/Prepare.h"

namespace cabslot {

Preview previewOf(const Choice& choice, Extent extent) {
    const std::string path = choice.path.toStdString();
    const ReadIR read = choice.name.isEmpty()
                            ? readIR(path, {}, extent)
                            : readIRAs(choice.name.toStdString(), path, {}, extent);
    if (!read)
        return {.whyNot = QString::fromStdString("It is refused: " + read.whyRefused + ".")};
    if (!choice.prepares || read.ir.factory)
        return {.summary = summaryOf(read), .ir = read.ir};
    const PreparedIR prepared = prepare(read, {.lowCut = choice.lowCut, .highCut = choice.highCut});
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
