#include "ui/Preview.h"

#include "irfile/QNIRFile.h"

#include <QFileInfo>

#include <algorithm>

namespace cabslot {

namespace {

// As the pedal shows it: a 0 byte shows nothing.
std::string shownName(const QNIRFile& file) {
    std::string name;
    std::ranges::copy_if(file.nameField(), std::back_inserter(name),
                         [](std::uint8_t byte) { return byte != 0; });
    return QString::fromLatin1(name.data(), static_cast<qsizetype>(name.size()))
        .trimmed()
        .toStdString();
}

} // namespace

Preview previewOf(const QString& path) {
    QNIRFile file;
    Block block{};
    if (!file.openForInspection(path.toStdString(), Extent::start) || !file.GetIRDataBuffer(block))
        return {std::nullopt, QString::fromStdString("It is refused: " + file.whyRefused() + ".")};
    return {summaryOf(file, block, shownName(file)), {}};
}

bool isWavName(const QString& path) {
    return QFileInfo(path).suffix().compare("wav", Qt::CaseInsensitive) == 0;
}

} // namespace cabslot
