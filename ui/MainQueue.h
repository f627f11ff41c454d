// Work for the main thread, in order, one block at a time.
//
// Blocks wait while one runs, also when that one has an event loop of its own (an alert), and while
// the queue is held (a slot's upload).
#pragma once

#include <QObject>

#include <deque>
#include <functional>
#include <mutex>

namespace cabslot {

class MainQueue final : public QObject {
    Q_OBJECT
public:
    /// Any thread. The block runs later on the thread that made the queue, unless it goes first.
    void post(std::function<void()> block);

    /// Main thread. Calls nest: each hold() wants its release().
    void hold() { ++holds_; }
    void release();

private:
    void drain();
    void drainSoon();

    std::mutex mutex_;
    std::deque<std::function<void()>> blocks_;
    int holds_ = 0; // main thread only
};

} // namespace cabslot
