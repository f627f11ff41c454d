// Steps through a folder of IRs in the open panel, measured inside the program:
//
//   bench_preview PREFIX FOLDER PHRASE STEPS
//
// Prints milliseconds from the key that moves the selection: "painted" until the preview is
// painted; then, while listening, "heard" until the first sample of the new IR is passed to the
// sound device; and "rendered" for rendering a ten-second phrase.
#include "audition/LoadSound.h"
#include "ui/Listening.h"
#include "ui/OpenPanel.h"

#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QLineEdit>
#include <QListView>
#include <QPushButton>
#include <QSettings>
#include <QTest>

#include <atomic>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <functional>

using namespace cabslot;

namespace {

[[noreturn]] void fail(const char* what) {
    std::fprintf(stderr, "bench_preview: %s\n", what);
    std::exit(1);
}

double milliseconds(const QElapsedTimer& timer) {
    return static_cast<double>(timer.nsecsElapsed()) / 1e6;
}

/// Detects when a widget has been painted.
class PaintWatch final : public QObject {
public:
    explicit PaintWatch(QWidget* widget) { widget->installEventFilter(this); }
    bool painted = false;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() != QEvent::Paint)
            return false;
        watched->removeEventFilter(this);
        QCoreApplication::sendEvent(watched, event);
        watched->installEventFilter(this);
        painted = true;
        return true;
    }
};

/// Runs the event loop until `done`; false on timeout.
bool runUntil(const std::function<bool()>& done) {
    QElapsedTimer limit;
    limit.start();
    while (!done() && limit.elapsed() < 10000)
        QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents, 1);
    return done();
}

/// The installed library, with access to its player.
class WatchedLibrary final : public SoundLibrary {
public:
    explicit WatchedLibrary(const std::string& prefix) {
        std::string why;
        library_ = loadSound(prefix, why);
        if (library_ == nullptr)
            fail(why.c_str());
    }

    std::unique_ptr<Phrase> openPhrase(const std::string& path, std::string& why) const override {
        return library_->openPhrase(path, why);
    }
    std::unique_ptr<Player> makePlayer() const override {
        auto player = library_->makePlayer();
        player_ = player.get();
        return player;
    }

    /// How many renderings have started to play; valid while listening.
    unsigned changes() const { return player_.load()->changes(); }

private:
    SoundLibrary* library_ = nullptr;
    mutable std::atomic<Player*> player_ = nullptr;
};

struct Panel {
    explicit Panel(Listening& listening) {
        showOpenPanel(&window, {.title = "Bench"}, listening, [](int, const Choice&) {});
        dialog = window.findChild<OpenPanel*>();
        list = dialog->findChild<QListView*>("files");
        listen = dialog->findChild<QPushButton*>("listen");
    }

    /// All files are listed and sorted: 0.wav is the first.
    bool isListed(qsizetype files) const {
        const QAbstractItemModel& model = *list->model();
        return model.rowCount() == files && model.index(0, 0).data() == "0.wav";
    }

    void step() { QTest::keyClick(list, Qt::Key_Down); }

    QWidget window;
    OpenPanel* dialog;
    QListView* list;
    QPushButton* listen;
};

void measurePainting(Panel& panel, int steps) {
    PaintWatch response(panel.dialog->findChild<QWidget*>("response"));
    for (int i = 0; i < steps; ++i) {
        response.painted = false;
        QElapsedTimer timer;
        timer.start();
        panel.step();
        if (!runUntil([&] { return response.painted; }))
            fail("the preview was not painted");
        std::printf("painted %.3f\n", milliseconds(timer));
    }
}

// The device asks for samples at its own pace; the steps fall anywhere in between.
void measureHearing(Panel& panel, const WatchedLibrary& library, int steps) {
    if (!runUntil([&] { return panel.listen->isEnabled(); }))
        fail("there is no sound device");
    panel.listen->click();
    QTest::qWait(3000); // a null output takes two seconds to start
    if (library.changes() == 0)
        fail("nothing is heard");
    for (int i = 0; i < steps; ++i) {
        QTest::qWait(60 + i % 23); // the previous cross-fade is over
        const unsigned before = library.changes();
        QElapsedTimer timer;
        timer.start();
        panel.step();
        if (!runUntil([&] { return library.changes() != before; }))
            fail("the new IR was not heard");
        std::printf("heard %.3f\n", milliseconds(timer));
    }
}

void measureRendering(const SoundLibrary& library, const std::string& phraseFile, int times) {
    std::string why;
    const auto phrase = library.openPhrase(phraseFile, why);
    if (!phrase)
        fail(why.c_str());
    Samples ir{};
    for (std::size_t i = 0; i < ir.size(); ++i)
        ir[i] = std::cos(static_cast<double>(i * i)) * std::exp(-static_cast<double>(i) / 100);
    for (int i = 0; i < times; ++i) {
        QElapsedTimer timer;
        timer.start();
        const Rendering rendering = phrase->render(ir, Level::matched);
        std::printf("rendered %.3f\n", milliseconds(timer));
    }
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 5)
        fail("see the top of PreviewBench.cpp");
    const QApplication application(argc, argv);
    const std::string prefix = argv[1];
    const int steps = std::atoi(argv[4]);
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, QDir::tempPath());
    QSettings().setValue("openPanel/lastFolder", QString(argv[2]));
    WatchedLibrary library(prefix);
    Listening listening([&](std::string&) { return &library; }, prefix + "/share/cabslot");
    Panel panel(listening);
    if (!runUntil([&] { return panel.isListed(QDir(argv[2]).entryList({"*.wav"}).size()); }))
        fail("the folder is not listed");
    QTest::keyClick(panel.dialog->findChild<QLineEdit*>("fileName"), Qt::Key_Down);
    measurePainting(panel, steps);
    measureHearing(panel, library, steps);
    measureRendering(library, argv[3], steps);
    std::fflush(stdout);
    std::_Exit(0);
}
