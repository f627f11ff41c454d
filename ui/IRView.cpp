#include "ui/IRView.h"

#include "ui/ElidedText.h"
#include "ui/Look.h"
#include "ui/PicturePainter.h"

#include <QFrame>
#include <QGuiApplication>
#include <QLabel>
#include <QScreen>
#include <QScrollArea>
#include <QVBoxLayout>

#include <memory>

namespace cabslot {

namespace {

constexpr int spacing = 12;

constexpr int lowScreen = 700; // pixels; on a lower one the texts get fewer lines

bool isScreenLow() {
    return QGuiApplication::primaryScreen()->availableSize().height() < lowScreen;
}

// The tool tip shows the rest.
int detailLines() {
    return isScreenLow() ? 2 : 3;
}

// The rest can be scrolled to.
int findingLines() {
    return isScreenLow() ? 2 : 4;
}

QLabel* makeLabel(const char* objectName, const char* role) {
    auto* label = new QLabel;
    label->setObjectName(objectName);
    label->setProperty("role", role);
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    label->setTextInteractionFlags(Qt::TextSelectableByMouse);
    return label;
}

// With a fixed height, so that the plots do not move from file to file.
QScrollArea* scrolled(QLabel* label) {
    auto* area = new QScrollArea;
    area->setWidget(label);
    area->setWidgetResizable(true);
    area->setFrameShape(QFrame::NoFrame);
    area->setFocusPolicy(Qt::NoFocus);
    area->setFixedHeight(findingLines() * label->fontMetrics().lineSpacing());
    label->setAlignment(Qt::AlignTop);
    return area;
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

// The origin is a part of a sentence or several sentences.
QString joined(const QString& origin, const QString& levels) {
    if (!origin.endsWith('.'))
        return origin + "; " + levels;
    return origin + ' ' + levels.left(1).toUpper() + levels.mid(1);
}

QString findingsInWords(const IRSummary& summary) {
    QStringList lines;
    for (const Finding& finding : summary.findings)
        lines << QString::fromStdString(finding.text);
    return lines.isEmpty() ? QString("Nothing odd was found.") : lines.join('\n');
}

} // namespace

IRView::IRView(QWidget* parent) : QWidget(parent) {
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins({});
    layout->setSpacing(spacing);
    name_ = makeLabel("irName", "name");
    name_->setFont(nameFont());
    detail_ = new ElidedText(detailLines());
    detail_->setObjectName("irDetail");
    detail_->setProperty("role", "detail");
    detail_->setAlignment(Qt::AlignTop);
    layout->addWidget(name_);
    layout->addWidget(detail_);
    card_ = new QFrame;
    card_->setProperty("role", "card");
    auto* plots = new QVBoxLayout(card_);
    wave_ = addPlot(*plots, "wave", "Waveform over 23 milliseconds", 2);
    response_ = addPlot(*plots, "response", "Frequency response", 3);
    layout->addWidget(card_, 1);
    findings_ = makeLabel("findings", "findings");
    layout->addWidget(scrolled(findings_));
    // Without plots, the text stays at the top.
    QSizePolicy keepsItsPlace = card_->sizePolicy();
    keepsItsPlace.setRetainSizeWhenHidden(true);
    card_->setSizePolicy(keepsItsPlace);
}

void IRView::showIR(const IRSummary& summary) {
    const QString levels = QString::fromStdString(levelsText(summary.samples));
    const auto response = std::make_shared<const Response>(summary.samples);
    const Samples samples = summary.samples;
    name_->setText(QString::fromStdString(summary.name));
    detail_->setText(joined(QString::fromStdString(summary.origin), levels));
    wave_->setPlot([samples](const PlotSize& size) { return wavePlot(samples, size); }, levels);
    response_->setPlot([samples, response](
                           const PlotSize& size) { return responsePlot(samples, *response, size); },
                       responseInWords(samples, *response));
    findings_->setText(findingsInWords(summary));
    card_->show();
}

void IRView::showReason(const QString& title, const QString& reason) {
    name_->setText(title);
    detail_->setText(reason);
    findings_->clear();
    card_->hide();
}

} // namespace cabslot
