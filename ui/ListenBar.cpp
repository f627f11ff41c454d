#include "ui/ListenBar.h"

#include "audition/Phrases.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFileDialog>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace cabslot {

namespace {

using namespace std::chrono_literals;

constexpr auto lookInterval = 3s;

QString inWords(const Listener::Status& status) {
    if (status.state == Listener::State::unknown)
        return "Looking for a sound device…";
    const std::string& words = status.why.empty() ? status.note : status.why;
    return QString::fromStdString(words);
}

} // namespace

ListenBar::ListenBar(Listening& listening, QWidget* parent)
    : QWidget(parent), listening_(&listening), switch_(new QPushButton("&Listen")),
      phrase_(new QComboBox), asItIs_(new QCheckBox("&As loud as it is")), words_(new QLabel) {
    switch_->setObjectName("listen");
    switch_->setCheckable(true);
    switch_->setAutoDefault(false);
    switch_->setProperty("role", "switch");
    switch_->setToolTip(
        "Plays a guitar phrase through the IR, in a loop (Space in the list; Ctrl+L)");
    phrase_->setObjectName("phrase");
    phrase_->setAccessibleName("Phrase to listen with");
    asItIs_->setObjectName("asLoudAsItIs");
    asItIs_->setToolTip("Otherwise every IR is played equally loud, so that a louder one does not "
                        "seem better");
    words_->setObjectName("listenWords");
    words_->setProperty("role", "detail");
    words_->setTextFormat(Qt::PlainText);
    words_->setWordWrap(true);
    words_->setMinimumHeight(words_->fontMetrics().lineSpacing()); // or text would move the rest
    for (const ShippedPhrase& phrase : shippedPhrases)
        phrase_->addItem(QString::fromUtf8(phrase.title), QString::fromUtf8(phrase.name));
    phrase_->addItem("My own…", Listening::own);

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins({});
    auto* row = new QHBoxLayout;
    row->addWidget(switch_);
    row->addWidget(phrase_);
    row->addWidget(asItIs_);
    row->addStretch();
    layout->addLayout(row);
    layout->addWidget(words_);

    connect(switch_, &QPushButton::clicked, this,
            [this](bool on) { on ? listening_->start(this, ir_) : listening_->stop(this); });
    connect(phrase_, &QComboBox::activated, this, &ListenBar::choosePhrase);
    connect(asItIs_, &QCheckBox::clicked, this,
            [this](bool asItIs) { listening_->setLevel(asItIs ? Level::asItIs : Level::matched); });
    connect(&listening, &Listening::changed, this, &ListenBar::refresh);
    lookAgain_.setInterval(lookInterval);
    connect(&lookAgain_, &QTimer::timeout, &listening, &Listening::look);
    refresh();
}

ListenBar::~ListenBar() {
    if (!listening_)
        return;
    disconnect(listening_, nullptr, this, nullptr);
    listening_->stop(this);
}

void ListenBar::setIR(const std::optional<Samples>& ir) {
    ir_ = ir;
    listening_->setIR(this, ir);
    refresh();
}

QList<QWidget*> ListenBar::tabOrder() const {
    return {switch_, phrase_, asItIs_};
}

void ListenBar::toggle() {
    switch_->click();
}

void ListenBar::showEvent(QShowEvent* /*event*/) {
    listening_->look();
}

void ListenBar::hideEvent(QHideEvent* /*event*/) {
    lookAgain_.stop();
    if (listening_)
        listening_->stop(this);
}

void ListenBar::choosePhrase(int index) {
    const QString name = phrase_->itemData(index).toString();
    if (name == Listening::own)
        return chooseOwnPhrase();
    listening_->setPhrase(name);
}

// If cancelled, keeps the previous choice.
void ListenBar::chooseOwnPhrase() {
    const QString file = QFileDialog::getOpenFileName(
        this, "A dry phrase of your own", listening_->ownPhrase(),
        "Sound files (*.wav *.flac *.ogg *.mp3 *.aif *.aiff *.caf);;All files (*)");
    if (file.isEmpty())
        return refresh();
    listening_->setOwnPhrase(file);
}

void ListenBar::refresh() {
    const Listener::Status status = listening_->status();
    const bool unavailable = status.state == Listener::State::unavailable;
    const bool hasWork = ir_.has_value() || listening_->isOn(this);
    switch_->setEnabled(hasWork && !unavailable && status.state != Listener::State::unknown);
    switch_->setChecked(listening_->isOn(this));
    switch_->setAccessibleDescription(unavailable ? inWords(status) : QString());
    words_->setText(inWords(status));
    asItIs_->setChecked(listening_->level() == Level::asItIs);
    if (const QString own = listening_->ownPhrase(); !own.isEmpty())
        phrase_->setItemText(phrase_->findData(Listening::own), QFileInfo(own).fileName() + "…");
    phrase_->setCurrentIndex(phrase_->findData(listening_->phrase()));
    if (!unavailable)
        lookAgain_.stop();
    else if (isVisible() && !lookAgain_.isActive())
        lookAgain_.start();
}

} // namespace cabslot
