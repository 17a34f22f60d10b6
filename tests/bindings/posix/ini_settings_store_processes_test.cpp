// Several processes at the same settings, some of them killed.
#include <gtest/gtest.h>
#include <sys/mman.h>

#include <atomic>
#include <csignal>
#include <memory>
#include <random>

#include "base/text.h"
#include "bindings/posix/child.h"
#include "bindings/posix/ini_settings_store.h"
#include "bindings/posix/ini_text.h"
#include "bindings/posix/temp_folder.h"
#include "bindings/posix/whole_file.h"

namespace korvane::posix {
namespace {

std::u16string Text(int number) { return ToUtf16(std::to_string(number)); }

// A number that this process and its children share.
class SharedNumber {
public:
    SharedNumber()
        : number_(static_cast<std::atomic<int>*>(::mmap(nullptr, sizeof(std::atomic<int>),
                                                        PROT_READ | PROT_WRITE,
                                                        MAP_SHARED | MAP_ANONYMOUS, -1, 0))) {}
    ~SharedNumber() { ::munmap(number_, sizeof(std::atomic<int>)); }
    SharedNumber(const SharedNumber&) = delete;
    SharedNumber& operator=(const SharedNumber&) = delete;
    std::atomic<int>& operator*() { return *number_; }

private:
    std::atomic<int>* number_;
};

class IniSettingsStoreProcessesTest : public testing::Test {
protected:
    // What a torn file could not be: whole lines of the known forms.
    void ExpectWholeFile() {
        const std::string bytes = ReadWhole(file_).value_or("");
        if (bytes.empty()) return;
        EXPECT_EQ(bytes.front(), '[');
        EXPECT_EQ(bytes.back(), '\n');
        for (std::size_t at = 0; at < bytes.size(); at = bytes.find('\n', at) + 1) {
            const std::string line = bytes.substr(at, bytes.find('\n', at) - at);
            const bool whole = line.empty() || (line.front() == '[' && line.back() == ']') ||
                               (line.find('=') != std::string::npos && line.back() == '.');
            ASSERT_TRUE(whole) << line;
        }
    }

    TempFolder temp_;
    // Patient: a busy machine is no failure.
    IniSettingsStore store_{temp_.folders(), std::chrono::minutes(1)};
    std::filesystem::path file_ = temp_.folders().config / "Korvane/Korvane.ini";
};

constexpr int kWriters = 8;
constexpr int kKeys = 12;

// Every text ends in "." and is long, so that a part of one would be noticed.
std::u16string Padded(const std::u16string& text) {
    return text + std::u16string(200, u'-') + u".";
}

void WriteMany(IniSettingsStore& store, int writer) {
    for (int k = 0; k < kKeys; ++k) {
        const auto own = u"own" + Text(writer) + u"-" + Text(k);
        store.Save(u"Korvane", u"Section" + Text(k % 3), own, Padded(own));
        store.Save(u"Korvane", u"Shared", u"key" + Text(k), Padded(Text(writer)));
    }
}

bool AnyRuns(std::vector<pid_t>& children) {
    for (auto child = children.begin(); child != children.end();) {
        int status = 0;
        if (::waitpid(*child, &status, WNOHANG) == 0) {
            ++child;
            continue;
        }
        EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0);
        child = children.erase(child);
    }
    return !children.empty();
}

TEST_F(IniSettingsStoreProcessesTest, LoseNothingOfEachOther) {
    std::vector<pid_t> children;
    for (int writer = 0; writer < kWriters; ++writer) {
        children.push_back(StartChild([this, writer] { WriteMany(store_, writer); }));
    }
    int reads = 0;
    std::size_t size = 0;
    while (AnyRuns(children)) {
        ExpectWholeFile();
        const auto now = ReadWhole(file_).value_or("").size();
        EXPECT_GE(now, size) << "something that was saved is lost";
        size = now;
        ++reads;
        ::usleep(500);
    }
    EXPECT_GT(reads, 10);
    ExpectWholeFile();
    for (int writer = 0; writer < kWriters; ++writer) {
        for (int k = 0; k < kKeys; ++k) {
            const auto own = u"own" + Text(writer) + u"-" + Text(k);
            EXPECT_EQ(store_.Get(u"Korvane", u"Section" + Text(k % 3), own, u""), Padded(own));
        }
    }
    for (int k = 0; k < kKeys; ++k) {
        const auto text = store_.Get(u"Korvane", u"Shared", u"key" + Text(k), u"");
        ASSERT_FALSE(text.empty());
        EXPECT_EQ(text, Padded(text.substr(0, 1)));
    }
}

TEST_F(IniSettingsStoreProcessesTest, LoseNothingWhenOneIsKilled) {
    constexpr int kRounds = 40;
    std::mt19937 random(19);
    SharedNumber done;  // keys below this number are saved
    for (int round = 0; round < kRounds; ++round) {
        const pid_t writer = StartChild([&] {
            for (;;) {
                const auto key = Text((*done).load());
                store_.Save(u"Korvane", u"S", u"key" + key, Padded(key));
                ++*done;
            }
        });
        ::usleep(static_cast<useconds_t>(random() % 30'000));
        ::kill(writer, SIGKILL);
        ASSERT_EQ(WaitFor(writer), -1);
        ExpectWholeFile();
        // The dead keep no lock: one failed attempt would raise.
        IniSettingsStore hasty(temp_.folders(), std::chrono::milliseconds(0));
        hasty.Save(u"Korvane", u"S", u"round" + Text(round), Padded(Text(round)));
        const IniText ini(ReadWhole(file_).value_or(""));
        for (int k = 0; k < *done; ++k) {
            ASSERT_EQ(ini.Find(u"S", u"key" + Text(k)), Padded(Text(k)));
        }
        for (int k = 0; k <= round; ++k) ASSERT_TRUE(ini.Find(u"S", u"round" + Text(k)));
    }
    EXPECT_GT(*done, 5);
    EXPECT_EQ(NamesIn(file_.parent_path()),
              (std::vector<std::string>{"Korvane.ini", "Korvane.ini.lock"}));
}

TEST_F(IniSettingsStoreProcessesTest, GoOnWhenTheirNeighboursAreKilled) {
    std::mt19937 random(23);
    std::vector<pid_t> writers;
    for (int writer = 0; writer < 2; ++writer) {
        writers.push_back(StartChild([this, writer] { WriteMany(store_, writer); }));
    }
    for (int round = 0; round < 25; ++round) {
        const pid_t victim = StartChild([this, round] {
            for (int k = 0;; ++k) {
                store_.Save(u"Korvane", u"V", u"victim" + Text(round), Padded(Text(k)));
            }
        });
        ::usleep(static_cast<useconds_t>(random() % 15'000));
        ::kill(victim, SIGKILL);
        ASSERT_EQ(WaitFor(victim), -1);
        ExpectWholeFile();
    }
    for (const pid_t writer : writers) EXPECT_EQ(WaitFor(writer), 0);
    for (int k = 0; k < kKeys; ++k) {
        const auto own = u"own1-" + Text(k);
        EXPECT_EQ(store_.Get(u"Korvane", u"Section" + Text(k % 3), own, u""), Padded(own));
    }
}

}  // namespace
}  // namespace korvane::posix
