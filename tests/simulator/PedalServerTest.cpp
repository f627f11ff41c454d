#include "simulator/server/PedalServer.h"
#include "tests/simulator/HostReports.h"

#include <gtest/gtest.h>

#include <fstream>
#include <sys/socket.h>
#include <sys/time.h>
#include <sys/un.h>
#include <thread>

namespace cabslot::simulator {
namespace {

using namespace testing;

/// One side of a connection. A wait that never ends fails the test instead of hanging it.
class Host {
public:
    explicit Host(FileDescriptor fd) : fd_(std::move(fd)) {
        const timeval patience{20, 0};
        ::setsockopt(fd_.get(), SOL_SOCKET, SO_RCVTIMEO, &patience, sizeof patience);
        ::setsockopt(fd_.get(), SOL_SOCKET, SO_SNDTIMEO, &patience, sizeof patience);
    }

    explicit Host(const std::string& path)
        : Host(FileDescriptor(::socket(AF_UNIX, SOCK_SEQPACKET, 0))) {
        sockaddr_un address{};
        address.sun_family = AF_UNIX;
        std::copy(path.begin(), path.end(), address.sun_path);
        connected_ =
            ::connect(fd_.get(), reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0;
    }

    bool connected() const { return connected_; }

    void sendPacket(std::span<const std::uint8_t> packet) {
        EXPECT_EQ(::send(fd_.get(), packet.data(), packet.size(), MSG_NOSIGNAL),
                  static_cast<ssize_t>(packet.size()));
    }

    void sendStream(const Bytes& stream) {
        for (const Report& report : cutIntoReports(stream))
            sendPacket(report);
    }

    /// The command of the next frame from the pedal; 0 when the connection has ended.
    std::uint8_t nextCommand() {
        while (true) {
            Report report{};
            const ssize_t count = ::recv(fd_.get(), report.data(), report.size(), 0);
            if (count != static_cast<ssize_t>(report.size())) {
                EXPECT_EQ(count, 0);
                return 0;
            }
            const auto frames = parser_.feed(std::span(report).subspan(1, report[0]));
            if (!frames.empty())
                return frames[0].command.value_or(0);
        }
    }

    void leave() { fd_.close(); }

private:
    FileDescriptor fd_;
    FrameParser parser_;
    bool connected_ = false;
};

class PedalServerTest : public ::testing::Test {
protected:
    ~PedalServerTest() override { end(); }

    PedalServer& server() {
        if (!server_)
            server_.emplace(store_, options_, [this](const auto& line) { log_.push_back(line); });
        return *server_;
    }

    void listen() {
        std::string why;
        ASSERT_TRUE(server().listenAt(path_, why)) << why;
    }

    void start() {
        thread_ = std::thread([this] { server().run(); });
    }

    /// Waits until the server has ended by itself; the log may be read after that.
    void waitForEnd() {
        if (thread_.joinable())
            thread_.join();
    }

    void end() {
        server().stop();
        waitForEnd();
    }

    Host adoptedHost() {
        int ends[2];
        EXPECT_EQ(::socketpair(AF_UNIX, SOCK_SEQPACKET, 0, ends), 0);
        server().adopt(ends[0]);
        return Host(FileDescriptor(ends[1]));
    }

    bool said(const std::string& line) const {
        return std::find(log_.begin(), log_.end(), line) != log_.end();
    }

    TempFolder folder_;
    std::string path_ = folder_.path() / "pedal.sock";
    PedalStore store_;
    PedalOptions options_;
    std::vector<std::string> log_;

private:
    std::optional<PedalServer> server_;
    std::thread thread_;
};

TEST_F(PedalServerTest, twoHostsShareOneStore) {
    options_.faults.confirmAtOnce = true;
    listen();
    start();
    Host first(path_);
    Host second(path_);
    // Interleaved, so each connection must have a parser of its own.
    const std::vector<Report> firsts = cutIntoReports(wholeImport(1, 0, "One"));
    const std::vector<Report> seconds = cutIntoReports(wholeImport(2, 0, "Two"));
    for (std::size_t i = 0; i < firsts.size(); ++i) {
        first.sendPacket(firsts[i]);
        second.sendPacket(seconds[i]);
    }
    EXPECT_EQ(first.nextCommand(), 0xF8);
    EXPECT_EQ(second.nextCommand(), 0xF8);
    end();
    EXPECT_EQ(first.nextCommand(), 0);
    EXPECT_EQ(shownName(store_.slot(0)), "One");
    EXPECT_EQ(shownName(store_.slot(1)), "Two");
    EXPECT_FALSE(std::filesystem::exists(path_));
}

TEST_F(PedalServerTest, endsWithItsLastAdoptedHostAndReadsAllItSent) {
    Host host = adoptedHost();
    host.sendStream(allDataRequest); // its reply stays unread
    start();
    host.sendStream(wholeImport(1, 0));
    host.leave();
    waitForEnd();
    EXPECT_EQ(shownName(store_.slot(0)), "Cab");
    EXPECT_EQ(log_.back(), "host 1 gone");
}

TEST_F(PedalServerTest, packetsOfOtherLengthsAreDropped) {
    Host host = adoptedHost();
    start();
    host.sendPacket(Bytes(65));
    host.sendPacket({});
    host.sendPacket(Bytes(1));
    host.sendStream(allDataRequest);
    EXPECT_EQ(host.nextCommand(), 0xF7);
    host.leave();
    waitForEnd();
    EXPECT_TRUE(said("dropped a report of 65 bytes, it must have 64"));
    EXPECT_TRUE(said("dropped a report of 0 bytes, it must have 64"));
    EXPECT_TRUE(said("dropped a report of 1 bytes, it must have 64"));
}

TEST_F(PedalServerTest, hostThatDoesNotReadStopsNobody) {
    Host deaf = adoptedHost();
    Host other = adoptedHost();
    start();
    // More than the socket and the queue hold together.
    for (int i = 0; i < 2000; ++i)
        deaf.sendStream(allDataRequest);
    other.sendStream(allDataRequest);
    EXPECT_EQ(other.nextCommand(), 0xF7);
    // What was kept are whole replies.
    EXPECT_EQ(deaf.nextCommand(), 0xF7);
    deaf.leave();
    other.leave();
    waitForEnd();
    EXPECT_TRUE(said("host 1 does not read: replies are dropped"));
}

TEST_F(PedalServerTest, replacesAStaleSocketFile) {
    {
        const FileDescriptor dead(::socket(AF_UNIX, SOCK_SEQPACKET, 0));
        sockaddr_un address{};
        address.sun_family = AF_UNIX;
        std::copy(path_.begin(), path_.end(), address.sun_path);
        ASSERT_EQ(::bind(dead.get(), reinterpret_cast<const sockaddr*>(&address), sizeof address),
                  0);
    }
    ASSERT_TRUE(std::filesystem::exists(path_));
    listen();
    EXPECT_TRUE(Host(path_).connected());
}

TEST_F(PedalServerTest, refusesPathsThatAreNotItsOwn) {
    listen();
    PedalServer another(store_, options_, {});
    std::string why;
    EXPECT_FALSE(another.listenAt(path_, why));
    EXPECT_NE(why.find("another program is listening there"), std::string::npos) << why;
    EXPECT_TRUE(Host(path_).connected()); // still the first one's

    const std::string file = folder_.path() / "notes.txt";
    std::ofstream(file) << "mine";
    EXPECT_FALSE(another.listenAt(file, why));
    EXPECT_NE(why.find("no socket"), std::string::npos) << why;
    EXPECT_TRUE(std::filesystem::exists(file));

    EXPECT_FALSE(another.listenAt(std::string(108, 'x'), why));
    EXPECT_NE(why.find("107 bytes at most"), std::string::npos) << why;
    EXPECT_FALSE(another.listenAt(folder_.path() / "no" / "folder", why));
    EXPECT_NE(why.find("No such file or directory"), std::string::npos) << why;
}

TEST_F(PedalServerTest, leavesASocketFileOfAnotherProgram) {
    listen();
    std::filesystem::remove(path_);
    std::ofstream(path_) << "another's";
    end();
    start();
    waitForEnd();
    EXPECT_TRUE(std::filesystem::exists(path_));
}

} // namespace
} // namespace cabslot::simulator
