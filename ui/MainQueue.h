// Queues work for the main thread and runs it in order, one block at a time.
//
// Blocks wait while another one runs, even if that one runs an event loop (an alert), and while the
// queue is held (a slot's upload).
#pragma once

#include <QObject>

#include <deque>
#include <functional>
#include <mutex>

namespace cabslot {

class MainQueue final : public QObject {
    Q_OBJECT
public:
    /// Any thread. The block runs later on the queue's thread, if the queue still exists by then.
    void post(std::function<void()> block);

    /// Main thread. Calls nest: each hold() needs its release().
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
