#include "ui/LoadBar.h"

#include "irfile/NameField.h"
#include "irfile/SlotName.h"
#include "ui/PrepareSetting.h"
#include "ui/Settings.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QFileInfo>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRegularExpressionValidator>
#include <QSettings>
#include <QVBoxLayout>
#include <QWindow>

#include <string>
#include <vector>

namespace cabslot {

namespace {

std::vector<std::string> inUtf8(const QStringList& texts) {
    std::vector<std::string> all;
    for (const QString& text : texts)
        all.push_back(text.toStdString());
    return all;
}

// A name that stands out from the files beside it; empty if the rule's will do.
QString proposalFor(const QString& path, const QStringList& taken) {
    const std::string file = path.toStdString();
    const std::vector<std::string> names = inUtf8(taken);
    if (path.isEmpty() || nameProblem(file, names) == NameProblem::none)
        return {};
    const QStringList beside = QFileInfo(path).dir().entryList({"*.[Ww][Aa][Vv]"}, QDir::Files);
    return QString::fromStdString(proposedName(file, inUtf8(beside), names));
}

QString hertzText(int hertz) {
    return hertz < 1000 ? QString("%1 Hz").arg(hertz) : QString("%1 kHz").arg(hertz / 1000);
}

} // namespace

LoadBar::LoadBar(const QStringList& taken, QWidget* parent)
    : QWidget(parent), taken_(taken), name_(new QLineEdit), proposal_(new QPushButton),
      prepare_(new QCheckBox("&Prepare")) {
    name_->setObjectName("slotName");
    name_->setMaxLength(static_cast<int>(wavNameSize));
    name_->setValidator(
        new QRegularExpressionValidator(QRegularExpression("[ -~]*"), name_)); // plain ASCII
    name_->setToolTip("Up to ten letters, digits and signs; empty: as the file's name gives it");
    proposal_->setObjectName("proposal");
    proposal_->setProperty("role", "inline");
    proposal_->setAutoDefault(false);
    prepare_->setObjectName("prepare");
    prepare_->setToolTip(
        "Resamples well, trims, fades and sets the level: the best 1024 points that "
        "the file can give, not its first ones");
    prepare_->setChecked(preparesFiles());
    lowCut_ = makeCut("Low cut", lowCutKey, {60, 80, 100, 120, 150});
    highCut_ = makeCut("High cut", highCutKey, {12000, 10000, 8000, 6000, 5000});
    layOut();
    connect(name_, &QLineEdit::textEdited, this, &LoadBar::changed);
    connect(proposal_, &QPushButton::clicked, this, [this] {
        name_->setText(proposed_);
        emit changed();
    });
    connect(prepare_, &QCheckBox::toggled, this, [this](bool on) {
        setPreparesFiles(on);
        for (QComboBox* cut : {lowCut_, highCut_})
            cut->setEnabled(on);
        emit changed();
    });
    // The window's menu changes it, too.
    connect(qApp, &QGuiApplication::focusWindowChanged, prepare_,
            [this] { prepare_->setChecked(preparesFiles()); });
    setFile({});
}

void LoadBar::layOut() {
    auto* rows = new QVBoxLayout(this);
    rows->setContentsMargins({});
    auto* naming = new QHBoxLayout;
    auto* title = new QLabel("Na&me in the pedal:");
    title->setBuddy(name_);
    name_->setFixedWidth(name_->fontMetrics().horizontalAdvance(QString(wavNameSize + 2, 'M')));
    for (QWidget* widget : {static_cast<QWidget*>(title), static_cast<QWidget*>(name_),
                            static_cast<QWidget*>(proposal_)})
        naming->addWidget(widget);
    naming->addStretch();
    auto* preparing = new QHBoxLayout;
    for (QWidget* widget : {static_cast<QWidget*>(prepare_), static_cast<QWidget*>(lowCut_),
                            static_cast<QWidget*>(highCut_)})
        preparing->addWidget(widget);
    preparing->addStretch();
    rows->addLayout(naming);
    rows->addLayout(preparing);
}

// Off, or one of `hertz`; it acts as a step of preparing.
QComboBox* LoadBar::makeCut(const QString& name, const QString& key,
                            std::initializer_list<int> hertz) {
    auto* box = new QComboBox;
    box->setObjectName(key);
    box->setAccessibleName(name);
    box->setToolTip(name + ", 12 dB per octave, when the file is prepared");
    box->addItem("No " + name.toLower(), 0);
    for (const int frequency : hertz)
        box->addItem(name + " " + hertzText(frequency), frequency);
    box->setCurrentIndex(qMax(0, box->findData(QSettings().value(key, 0).toInt())));
    box->setEnabled(prepare_->isChecked());
    connect(box, &QComboBox::activated, this, [this, box, key] {
        storeSetting(key, box->currentData());
        emit changed();
    });
    return box;
}

void LoadBar::setFile(const QString& path) {
    if (path == path_ && !path.isEmpty())
        return;
    path_ = path;
    const std::string file = path.toStdString();
    const bool refused = nameProblem(file, {}) == NameProblem::refused;
    rule_ = path.isEmpty() || refused ? QString() : QString::fromStdString(ruleName(file));
    name_->setText(rule_);
    name_->setEnabled(!path.isEmpty());
    proposed_ = proposalFor(path, taken_);
    proposal_->setText("Use “" + QString(proposed_).replace('&', "&&") + "”");
    proposal_->setToolTip(refused ? "The pedal cannot show the file's name"
                                  : "Another slot has the name that the file's gives");
    proposal_->setVisible(!proposed_.isEmpty());
}

QList<QWidget*> LoadBar::tabOrder() const {
    return {name_, proposal_, prepare_, lowCut_, highCut_};
}

Choice LoadBar::choiceOf(const QString& path) const {
    Choice choice{.path = path,
                  .prepares = prepare_->isChecked(),
                  .lowCut = lowCut_->currentData().toDouble(),
                  .highCut = highCut_->currentData().toDouble()};
    const QString name = name_->text();
    if (path == path_ && name != rule_ && !name.trimmed().isEmpty())
        choice.name = name;
    return choice;
}

} // namespace cabslot
