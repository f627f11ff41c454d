#include "ui/Preview.h"

#include "irfile/QNIRFile.h"
#include "prepare/Prepare.h"

#include <QFileInfo>

#include <algorithm>

namespace cabslot {

namespace {

// The name as the pedal shows it: 0 bytes are left out.
std::string shownName(const QNIRFile& file) {
    std::string name;
    std::ranges::copy_if(file.nameField(), std::back_inserter(name),
                         [](std::uint8_t byte) { return byte != 0; });
    return QString::fromLatin1(name.data(), static_cast<qsizetype>(name.size()))
        .trimmed()
        .toStdString();
}

} // namespace

Preview previewOf(const QString& path, bool prepares) {
    QNIRFile file;
    Block block{};
    if (!file.openForInspection(path.toStdString(), Extent::start) || !file.GetIRDataBuffer(block))
        return {std::nullopt, QString::fromStdString("It is refused: " + file.whyRefused() + ".")};
    if (!prepares || file.isInteralIR())
        return {summaryOf(file, block, shownName(file)), {}};
    const PreparedIR prepared = prepareFile(file, block, {});
    std::string origin = summaryOf(file, block, {}).origin + ". Prepared.";
    for (const std::string& sentence : prepared.steps)
        origin += " " + sentence;
    return {summaryOf(prepared.block, shownName(file), origin), {}};
}

bool isWavName(const QString& path) {
    return QFileInfo(path).suffix().compare("wav", Qt::CaseInsensitive) == 0;
}

} // namespace cabslot
