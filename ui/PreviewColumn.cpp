#include "ui/PreviewColumn.h"

#include "ui/IRView.h"
#include "ui/ListenBar.h"
#include "ui/LoadBar.h"
#include "ui/Words.h"

#include <QFileInfo>
#include <QVBoxLayout>

namespace cabslot {

PreviewColumn::PreviewColumn(const QStringList& taken, Listening& listening, QWidget* parent)
    : QWidget(parent), ir_(new IRView), load_(new LoadBar(taken)),
      listen_(new ListenBar(listening)) {
    auto* below = new QVBoxLayout(this);
    below->setContentsMargins({});
    below->addWidget(ir_, 1);
    below->addWidget(load_);
    below->addWidget(listen_);
    connect(load_, &LoadBar::changed, this, [this] {
        if (!shown_.isEmpty())
            showFile(shown_);
    });
}

void PreviewColumn::showFile(const QString& path) {
    shown_ = path;
    const bool isWav = isWavName(path);
    load_->setFile(isWav && QFileInfo(path).isFile() ? path : QString());
    if (!isWav)
        return refuse(path, "Only WAV files (.wav) can be loaded.");
    const Preview preview = previewOf(load_->choiceOf(path), Extent::start);
    if (!preview.summary)
        return refuse(path, preview.whyNot);
    listen_->setIR(preview.summary->samples); // first, because its thread has more to do
    ir_->showIR(*preview.summary);
}

void PreviewColumn::refuse(const QString& path, const QString& why) {
    ir_->showReason(visible(QFileInfo(path).fileName()), visible(why));
    listen_->setIR(std::nullopt);
}

void PreviewColumn::showWords(const QString& title, const QString& words) {
    shown_.clear();
    load_->setFile({});
    ir_->showReason(visible(title), words);
    listen_->setIR(std::nullopt);
}

Choice PreviewColumn::choiceOf(const QString& path) const {
    return load_->choiceOf(path);
}

QList<QWidget*> PreviewColumn::tabOrder() const {
    return load_->tabOrder() + listen_->tabOrder();
}

void PreviewColumn::toggleListening() {
    listen_->toggle();
}

} // namespace cabslot
