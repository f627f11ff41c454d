// Upload after upload over a socket: every stored block is compared with what its file gives, and
// neither memory nor descriptors may grow.
//
//   soak UPLOADS [SEED]
//
// Prints its figures. Status 0: no difference, no growth. The C library keeps small pieces of freed
// memory in caches of every thread and counts them as used, so run it with
// GLIBC_TUNABLES=glibc.malloc.tcache_count=0 as scripts/soak does.
#include "tests/support/WavBuilder.h"

#include "device/HIDClass.h"
#include "device/SharedState.h"
#include "irfile/QNIRFile.h"
#include "platform/SocketHIDManager.h"
#include "simulator/server/PedalServer.h"
#include "upload/SlotUpload.h"

#include <cstdio>
#include <cstdlib>
#include <iterator>
#include <malloc.h>
#include <random>
#include <thread>

namespace cabslot::testing {
namespace {

using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;

constexpr auto confirmDelay = 1ms; // the one time that is the pedal's own; the frames have theirs
constexpr auto patience = 30s;
constexpr int uploadsPerSession = 20;
constexpr std::size_t heapTolerance = 4096; // bytes; a text may be longer than another

class Random {
public:
    explicit Random(unsigned seed) : engine_(seed) {}

    int number(int from, int to) { return std::uniform_int_distribution<int>(from, to)(engine_); }
    bool oneIn(int n) { return number(1, n) == 1; }

    template<typename Value, std::size_t count>
    Value among(const Value (&values)[count]) {
        return values[number(0, static_cast<int>(count) - 1)];
    }

    std::string noise(int size) {
        std::string bytes;
        for (int i = 0; i < size; ++i)
            bytes += static_cast<char>(number(0, 255));
        return bytes;
    }

private:
    std::mt19937 engine_;
};

/// A file of any rate, depth, channel count and length; some are cut off, some factory IRs.
std::string randomFile(Random& random) {
    if (random.oneIn(10))
        return factoryFile(static_cast<std::uint8_t>(random.number(0, 29)),
                           random.noise(random.number(0, 4000)));
    WavBuilder wav;
    wav.rate = random.among({44100U, 48000U, 88200U, 96000U});
    wav.bits = static_cast<std::uint16_t>(random.among({8, 16, 24, 32}));
    wav.channels = static_cast<std::uint16_t>(random.number(1, 2));
    wav.samples = random.noise(random.number(0, 20000));
    std::string bytes = wav.bytes();
    if (random.oneIn(10))
        bytes.resize(static_cast<std::size_t>(random.number(44, static_cast<int>(bytes.size()))));
    return bytes;
}

/// The pedal, on a thread of its own, with its slots in a folder.
class Pedal {
public:
    explicit Pedal(const TempFolder& folder)
        : store_(simulator::PedalStore::open(folder.path("st"), why_)),
          server_(*store_, quick(), {}) {
        if (!server_.listenAt(folder.path("pedal.sock"), why_))
            throw std::runtime_error(why_);
        thread_ = std::thread([this] { server_.run(); });
    }
    Pedal(const Pedal&) = delete;
    Pedal& operator=(const Pedal&) = delete;
    ~Pedal() {
        server_.stop();
        thread_.join();
    }

private:
    static simulator::PedalOptions quick() {
        simulator::PedalOptions options;
        options.confirmDelay = confirmDelay;
        return options;
    }

    std::string why_;
    std::optional<simulator::PedalStore> store_;
    simulator::PedalServer server_;
    std::thread thread_;
};

/// Polls as fast as is fair.
class Waiting final : public UploadWait {
public:
    bool waitForUpload() override { return wait(); }
    bool waitForConfirmation(std::uint32_t /*poll*/) override { return wait(); }

private:
    bool wait() const {
        std::this_thread::sleep_for(1ms);
        return Clock::now() < deadline_;
    }
    Clock::time_point deadline_ = Clock::now() + patience;
};

struct Use {
    std::size_t heap;
    long residentKiB;
    long descriptors;
};

Use useNow() {
    long pages = 0;
    long resident = 0;
    std::ifstream("/proc/self/statm") >> pages >> resident;
    const std::filesystem::directory_iterator descriptors("/proc/self/fd");
    return {::mallinfo2().uordblks, resident * (::sysconf(_SC_PAGESIZE) / 1024),
            std::distance(begin(descriptors), end(descriptors))};
}

class Soak {
public:
    explicit Soak(unsigned seed) : random_(seed) {}

    /// So many uploads over one connection.
    void session(int uploads) {
        SocketHIDManager manager(folder_.path("pedal.sock"));
        resetSharedState();
        HIDClass link(manager);
        link.OpenDevice();
        for (Waiting waiting; IRNameArr.count() < slotCount;)
            if (!waiting.waitForUpload())
                throw std::runtime_error("the pedal does not send its data");
        for (int i = 0; i < uploads; ++i)
            upload();
    }

    int uploads() const { return uploads_; }
    int differences() const { return differences_; }

private:
    void upload() {
        const std::string path = folder_.write("Soak.wav", randomFile(random_));
        const auto slot = static_cast<std::size_t>(random_.number(0, slotCount - 1));
        Waiting waiting;
        const UploadOptions options{.arming = Arming::withLastFrame,
                                    .confirmationPolls = UINT32_MAX};
        const auto end =
            loadSlot(static_cast<std::uint32_t>(slot + 1), {path}, options, waiting).end;
        expected_[slot] = blockOf(path);
        ++uploads_;
        if (end != UploadEnd::confirmed || !allAsExpected())
            ++differences_;
    }

    static std::string blockOf(const std::string& path) {
        QNIRFile file;
        std::array<std::uint32_t, irPointCount> block{};
        if (!file.OpenFilePath(path) || !file.GetIRDataBuffer(block))
            throw std::runtime_error("refused: " + file.whyRefused());
        std::string bytes;
        for (const std::uint32_t point : block)
            appendLittleEndian(bytes, point & 0xFFFFFF, 4);
        return bytes;
    }

    /// The other slots, too, hold what was last put there.
    bool allAsExpected() const {
        for (std::size_t i = 0; i < slotCount; ++i) {
            const std::string stored =
                contentOf(folder_.path("st/user" + std::to_string(i + 1) + ".slot"));
            if (stored.substr(0, expected_[i].size()) != expected_[i])
                return false;
        }
        return true;
    }

    Random random_;
    TempFolder folder_;
    Pedal pedal_{folder_};
    std::array<std::string, slotCount> expected_;
    int uploads_ = 0;
    int differences_ = 0;
};

int run(int uploads, unsigned seed) {
    Soak soak(seed);
    soak.session(std::min(uploads, uploadsPerSession)); // from here on nothing may grow
    const Use before = useNow();
    const auto begin = Clock::now();
    while (soak.uploads() < uploads) {
        soak.session(std::min(uploads - soak.uploads(), uploadsPerSession));
        std::fprintf(stderr, "%d of %d uploads\n", soak.uploads(), uploads);
    }
    const std::chrono::duration<double> took = Clock::now() - begin;
    const Use after = useNow();
    const bool grew =
        after.heap > before.heap + heapTolerance || after.descriptors != before.descriptors;
    std::printf("seed %u: %d uploads, %d differences; %.0f s\n", seed, soak.uploads(),
                soak.differences(), took.count());
    std::printf("heap in use %zu -> %zu bytes, resident %ld -> %ld KiB, descriptors %ld -> %ld\n",
                before.heap, after.heap, before.residentKiB, after.residentKiB, before.descriptors,
                after.descriptors);
    return soak.differences() == 0 && !grew ? EXIT_SUCCESS : EXIT_FAILURE;
}

} // namespace
} // namespace cabslot::testing

int main(int argc, char** argv) {
    const int uploads = argc > 1 ? std::atoi(argv[1]) : 0;
    if (uploads < 1) {
        std::fprintf(stderr, "usage: soak UPLOADS [SEED]\n");
        return 2;
    }
    const unsigned seed =
        argc > 2 ? static_cast<unsigned>(std::atoi(argv[2])) : std::random_device{}();
    return cabslot::testing::run(uploads, seed);
}
