#include "ui/IRWindow.h"

#include "ui/Look.h"
#include "ui/PicturePainter.h"

#include <QFrame>
#include <QLabel>
#include <QScreen>
#include <QVBoxLayout>

#include <memory>

namespace cabslot {

namespace {

constexpr int margin = 24;
constexpr int spacing = 12;
constexpr QSize firstSize = {680, 620};
constexpr double screenShare = 0.9; // the window's frame needs the rest

QLabel* addLabel(QVBoxLayout& layout, const char* objectName, const char* role) {
    auto* label = new QLabel;
    label->setObjectName(objectName);
    label->setProperty("role", role);
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    label->setTextInteractionFlags(Qt::TextSelectableByMouse);
    layout.addWidget(label);
    return label;
}

PlotView* addPlot(QVBoxLayout& layout, const char* objectName, const QString& accessibleName,
                  int stretch) {
    auto* plot = new PlotView;
    plot->setObjectName(objectName);
    plot->setAccessibleName(accessibleName);
    layout.addWidget(plot, stretch);
    return plot;
}

QString responseInWords(const Samples& samples, const Response& response) {
    if (peakOf(samples) == 0)
        return "silent";
    const Response::Peak peak = response.peak();
    return QString("from 20 Hz to 20 kHz; the highest place is %1 dB at %2 Hz")
        .arg(peak.decibels, 0, 'f', 1)
        .arg(peak.hertz, 0, 'f', 0);
}

QString findingsInWords(const IRSummary& summary) {
    QStringList lines;
    for (const Finding& finding : summary.findings)
        lines << QString::fromStdString(finding.text);
    return lines.isEmpty() ? QString("Nothing odd was found.") : lines.join('\n');
}

} // namespace

IRWindow::IRWindow(QWidget* parent) : QDialog(parent) {
    setAttribute(Qt::WA_DeleteOnClose);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(margin, margin, margin, margin);
    layout->setSpacing(spacing);
    name_ = addLabel(*layout, "irName", "name");
    name_->setFont(nameFont());
    detail_ = addLabel(*layout, "irDetail", "status");
    auto* card = new QFrame;
    card->setProperty("role", "card");
    auto* plots = new QVBoxLayout(card);
    wave_ = addPlot(*plots, "wave", "Waveform over 23 milliseconds", 2);
    response_ = addPlot(*plots, "response", "Frequency response", 3);
    layout->addWidget(card, 1);
    findings_ = addLabel(*layout, "findings", "findings");
    resize(firstSize.boundedTo(screen()->availableSize() * screenShare));
}

void IRWindow::setSummary(const QString& slot, const IRSummary& summary) {
    const QString name = QString::fromStdString(summary.name);
    const QString levels = QString::fromStdString(levelsText(summary.samples));
    const auto response = std::make_shared<const Response>(summary.samples);
    const Samples samples = summary.samples;
    setWindowTitle(slot + ": " + name);
    name_->setText(name);
    detail_->setText(QString::fromStdString(summary.origin) + "; " + levels);
    wave_->setPlot([samples](const PlotSize& size) { return wavePlot(samples, size); }, levels);
    response_->setPlot([samples, response](
                           const PlotSize& size) { return responsePlot(samples, *response, size); },
                       responseInWords(samples, *response));
    findings_->setText(findingsInWords(summary));
}

} // namespace cabslot
