#include "ui/MainQueue.h"

#include <utility>

namespace cabslot {

void MainQueue::post(std::function<void()> block) {
    {
        const std::lock_guard lock(mutex_);
        blocks_.push_back(std::move(block));
    }
    drainSoon();
}

void MainQueue::release() {
    --holds_;
    drainSoon();
}

void MainQueue::drainSoon() {
    QMetaObject::invokeMethod(this, &MainQueue::drain, Qt::QueuedConnection);
}

void MainQueue::drain() {
    while (holds_ == 0) {
        std::function<void()> block;
        {
            const std::lock_guard lock(mutex_);
            if (blocks_.empty())
                return;
            block = std::move(blocks_.front());
            blocks_.pop_front();
        }
        ++holds_;
        block();
        --holds_;
    }
}

} // namespace cabslot
