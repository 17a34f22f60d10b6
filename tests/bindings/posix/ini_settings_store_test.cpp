#include "bindings/posix/ini_settings_store.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <random>

#include "bindings/posix/child.h"
#include "bindings/posix/errors.h"
#include "bindings/posix/file_lock.h"
#include "bindings/posix/random_text.h"
#include "bindings/posix/temp_folder.h"

namespace korvane::posix {
namespace {

using Names = std::vector<std::string>;

class IniSettingsStoreTest : public testing::Test {
protected:
    std::u16string Get(const std::u16string& key) {
        return store_.Get(u"Korvane", u"Section", key, u"none");
    }
    void Save(const std::u16string& key, const std::u16string& text) {
        store_.Save(u"Korvane", u"Section", key, text);
    }
    void WriteFile(const std::string& bytes) {
        MakeFolders(folder_);
        WriteBytes(file_, bytes);
    }

    TempFolder temp_;
    std::filesystem::path folder_ = temp_.folders().config / "Korvane";
    std::filesystem::path file_ = folder_ / "Korvane.ini";
    IniSettingsStore store_{temp_.folders()};
};

TEST_F(IniSettingsStoreTest, HoldsNothingAtFirst) {
    EXPECT_EQ(Get(u"key"), u"none");
    EXPECT_TRUE(NamesIn(temp_.path()).empty());
}

TEST_F(IniSettingsStoreTest, KeepsTexts) {
    Save(u"key", u"text");
    Save(u"empty", u"");
    EXPECT_EQ(Get(u"key"), u"text");
    EXPECT_EQ(Get(u"empty"), u"");
    EXPECT_EQ(IniSettingsStore(temp_.folders()).Get(u"Korvane", u"Section", u"key", u""), u"text");
    EXPECT_EQ(store_.Get(u"Korvane", u"Other", u"key", u"none"), u"none");
    EXPECT_EQ(store_.Get(u"Other", u"Section", u"key", u"none"), u"none");
    EXPECT_EQ(ReadBytes(file_), "[Section]\nkey=text\nempty=\n");
}

TEST_F(IniSettingsStoreTest, IsForTheUserAlone) {
    Save(u"key", u"text");
    EXPECT_EQ(ModeOf(temp_.folders().config), 0700U);
    EXPECT_EQ(ModeOf(folder_), 0700U);
    EXPECT_EQ(ModeOf(file_), 0600U);
    EXPECT_EQ(NamesIn(folder_), (Names{"Korvane.ini", "Korvane.ini.lock"}));
    ::chmod(file_.c_str(), 0644);
    Save(u"key", u"other");
    EXPECT_EQ(ModeOf(file_), 0644U);
}

TEST_F(IniSettingsStoreTest, KeepsEveryText) {
    std::mt19937 random(17);
    std::vector<std::u16string> texts;
    for (int k = 0; k < 50; ++k) {
        texts.push_back(RandomText(random, 200));
        Save(u"key" + std::u16string(static_cast<std::size_t>(k), u'.'), texts.back());
    }
    for (std::size_t k = 0; k < texts.size(); ++k) {
        EXPECT_EQ(Get(u"key" + std::u16string(k, u'.')), texts[k]);
    }
}

TEST_F(IniSettingsStoreTest, KeepsApplicationsApartWhateverTheirNames) {
    const std::vector<std::u16string> names = {u"A",
                                               u"a",
                                               u"../A",
                                               u"/A",
                                               u".A",
                                               u"%2E",
                                               u"",
                                               u"A.ini",
                                               u"\u00e9",
                                               u"A\n",
                                               std::u16string(u"A\0b", 3)};
    for (const auto& name : names) store_.Save(name, u"s", u"k", name + u"!");
    for (const auto& name : names) EXPECT_EQ(store_.Get(name, u"s", u"k", u"none"), name + u"!");
    EXPECT_EQ(NamesIn(temp_.folders().config), Names{"Korvane"});
    EXPECT_EQ(NamesIn(folder_).size(), names.size() * 2);
}

TEST_F(IniSettingsStoreTest, RaisesForANameThatNoFileCanHave) {
    const std::u16string name(300, u'x');
    EXPECT_THROW(store_.Save(name, u"s", u"k", u"t"), Error);
    EXPECT_EQ(store_.Get(name, u"s", u"k", u"none"), u"none");
}

TEST_F(IniSettingsStoreTest, SeesWhatOthersSaved) {
    Save(u"key", u"1");
    EXPECT_EQ(Get(u"key"), u"1");
    // Of one length and within one tick of the clock.
    for (const char16_t digit : std::u16string_view(u"23456789")) {
        const std::u16string text(1, digit);
        EXPECT_EQ(InChild([&] { Save(u"key", text); }), 0);
        EXPECT_EQ(Get(u"key"), text);
    }
}

TEST_F(IniSettingsStoreTest, DoesNotTouchTheFileForTheSameText) {
    Save(u"key", u"text");
    struct stat before {};
    ::stat(file_.c_str(), &before);
    Save(u"key", u"text");
    struct stat after {};
    ::stat(file_.c_str(), &after);
    EXPECT_EQ(after.st_ino, before.st_ino);
    EXPECT_EQ(after.st_mtim.tv_nsec, before.st_mtim.tv_nsec);
}

TEST_F(IniSettingsStoreTest, LivesWithATornFile) {
    for (const std::string& bytes :
         {std::string(), std::string("[Sect"), std::string("[Section]\nold=1\nke"),
          std::string(4096, '\0'), std::string("\xFF\xFE\0[", 4), std::string("[Section]\nkey")}) {
        WriteFile(bytes);
        EXPECT_EQ(Get(u"key"), u"none");
        Save(u"key", u"text");
        EXPECT_EQ(Get(u"key"), u"text");
        EXPECT_EQ(ReadBytes(file_).find(bytes), 0U);
    }
}

TEST_F(IniSettingsStoreTest, KeepsWhatAPersonAdded) {
    WriteFile("# mine\n\n[Elsewhere]\nunknown=1\n\n[Section]\n; why\nkey = old\njunk\n");
    Save(u"key", u"new");
    Save(u"more", u"2");
    EXPECT_EQ(ReadBytes(file_),
              "# mine\n\n[Elsewhere]\nunknown=1\n\n[Section]\n; why\nkey = new\njunk\nmore=2\n");
}

TEST_F(IniSettingsStoreTest, WritesThroughALink) {
    const auto dots = temp_.path() / "dots";
    std::filesystem::create_directory(dots);
    MakeFolders(folder_);
    std::filesystem::create_symlink("../../dots/korvane.ini", file_);
    EXPECT_EQ(Get(u"key"), u"none");
    Save(u"key", u"1");  // leads to a file that is not there yet
    Save(u"key", u"2");
    EXPECT_EQ(Get(u"key"), u"2");
    EXPECT_TRUE(std::filesystem::is_symlink(file_));
    EXPECT_EQ(ReadBytes(dots / "korvane.ini"), "[Section]\nkey=2\n");
    EXPECT_EQ(NamesIn(dots), (Names{"korvane.ini", "korvane.ini.lock"}));
}

TEST_F(IniSettingsStoreTest, RaisesWhereSomethingElseStands) {
    MakeFolders(file_);
    EXPECT_EQ(Get(u"key"), u"none");
    EXPECT_THROW(Save(u"key", u"text"), Error);
    std::filesystem::remove(file_);
    ASSERT_EQ(::mkfifo(file_.c_str(), 0600), 0);
    EXPECT_EQ(Get(u"key"), u"none");
    EXPECT_THROW(Save(u"key", u"text"), Error);
    EXPECT_FALSE(std::filesystem::is_regular_file(file_));
    std::filesystem::remove_all(folder_);
    WriteBytes(folder_, "");
    EXPECT_EQ(Get(u"key"), u"none");
    EXPECT_THROW(Save(u"key", u"text"), Error);
}

TEST_F(IniSettingsStoreTest, RaisesWithoutAHome) {
    IniSettingsStore store(Folders{});
    EXPECT_EQ(store.Get(u"A", u"s", u"k", u"none"), u"none");
    EXPECT_THROW(store.Save(u"A", u"s", u"k", u"t"), Error);
}

TEST_F(IniSettingsStoreTest, RaisesWithoutPermission) {
    const int code = WithoutPrivileges([&] {
        Save(u"key", u"old");
        ::chmod(file_.c_str(), 0);
        EXPECT_EQ(Get(u"key"), u"none");
        EXPECT_THROW(Save(u"other", u"1"), Error);
        ::chmod(file_.c_str(), 0600);
        EXPECT_EQ(Get(u"key"), u"old");
        ::chmod(folder_.c_str(), 0500);
        EXPECT_EQ(Get(u"key"), u"old");
        EXPECT_THROW(Save(u"key", u"new"), Error);
        EXPECT_EQ(Get(u"key"), u"old");
        ::chmod(folder_.c_str(), 0);
        EXPECT_EQ(Get(u"key"), u"none");
        EXPECT_THROW(Save(u"key", u"new"), Error);
        ::chmod(folder_.c_str(), 0700);
        EXPECT_EQ(ReadBytes(file_), "[Section]\nkey=old\n");
    });
    KORVANE_EXPECT_CHILD(code, "no other user to be");
}

TEST_F(IniSettingsStoreTest, RaisesWhenAnotherProcessKeepsTheLock) {
    Save(u"key", u"old");
    IniSettingsStore hasty(temp_.folders(), std::chrono::milliseconds(30));
    {
        const FileLock lock(file_.native() + ".lock", std::chrono::milliseconds(0));
        EXPECT_THROW(hasty.Save(u"Korvane", u"Section", u"key", u"new"), Error);
        EXPECT_EQ(Get(u"key"), u"old");
    }
    hasty.Save(u"Korvane", u"Section", u"key", u"new");
    EXPECT_EQ(Get(u"key"), u"new");
}

TEST_F(IniSettingsStoreTest, IsAsBeforeWhenTheDiskIsFull) {
    const int code = OnSmallDisk(temp_.path(), [&] {
        Save(u"key", u"old");
        FillDisk(temp_.path() / "filler", 0);
        const std::string before = ReadBytes(file_);
        for (const std::u16string& text : {std::u16string(u"new"), std::u16string(50'000, u'x')}) {
            try {
                Save(u"key", text);
                ADD_FAILURE() << "there is no room for it";
            } catch (const Error& error) {
                EXPECT_EQ(error.number(), kErrorDiskFull);
            }
            EXPECT_EQ(Get(u"key"), u"old");
            EXPECT_EQ(ReadBytes(file_), before);
            EXPECT_EQ(NamesIn(folder_), (Names{"Korvane.ini", "Korvane.ini.lock"}));
        }
        EXPECT_THROW(store_.Save(u"Other", u"s", u"k", u"t"), Error);
        EXPECT_EQ(store_.Get(u"Other", u"s", u"k", u"none"), u"none");
        EXPECT_FALSE(std::filesystem::exists(folder_ / "Other.ini"));
        std::filesystem::remove(temp_.path() / "filler");
        Save(u"key", u"new");
        EXPECT_EQ(Get(u"key"), u"new");
    });
    KORVANE_EXPECT_CHILD(code, "a small disk may not be mounted here");
}

TEST_F(IniSettingsStoreTest, RaisesOnADiskThatCannotBeWritten) {
    const int code = OnSmallDisk(temp_.path(), [&] {
        Save(u"key", u"old");
        if (!MakeReadOnly(temp_.path())) ::_exit(kNotPermitted);
        EXPECT_EQ(Get(u"key"), u"old");
        EXPECT_THROW(Save(u"key", u"new"), Error);
        EXPECT_EQ(Get(u"key"), u"old");
    });
    KORVANE_EXPECT_CHILD(code, "a small disk may not be mounted here");
}

}  // namespace
}  // namespace korvane::posix
