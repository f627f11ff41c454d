#include "ui/HandOver.h"

#include "base/Files.h"
#include "memory/SlotMemory.h"
#include "ui/Problem.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace cabslot {

namespace {

constexpr std::uint32_t longestPath = 32 * 1024; // bytes; the longest on Windows

QString fileFor(std::int64_t pid) {
    return QDir(QString::fromStdString(memoryFolder())).filePath(QString("open-%1").arg(pid));
}

} // namespace

void handOver(std::int64_t pid, const QString& path) {
    const QString file = fileFor(pid);
    QDir().mkpath(QFileInfo(file).path()); // if that fails, so does writing
    const QByteArray bytes = QFileInfo(path).absoluteFilePath().toUtf8();
    const auto* const first = reinterpret_cast<const std::uint8_t*>(bytes.data());
    const std::string why = replaceFile(
        file.toStdString(), {first, static_cast<std::size_t>(bytes.size())}, FileAccess::ownerOnly);
    if (!why.empty())
        printProblem(file.toStdString() + " cannot be written: " + why);
}

QString takeHandedOver() {
    const QString file = fileFor(QCoreApplication::applicationPid());
    const FileBytes read = readFile(file.toStdString(), longestPath);
    if (!read.bytes)
        return {};
    QFile::remove(file);
    return QString::fromUtf8(reinterpret_cast<const char*>(read.bytes.get()),
                             static_cast<qsizetype>(read.size));
}

} // namespace cabslot
