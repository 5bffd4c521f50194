#include <Platform/System/Bundle.hpp>

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>

namespace tovrel::tests {

namespace {

/// A folder with an Info.plist of that text.
class BundleFolder {
public:
    explicit BundleFolder(std::string_view infoPlist)
        : path_(std::filesystem::temp_directory_path() / ("bundle-" + std::to_string(++count))) {
        std::filesystem::create_directories(path_);
        std::ofstream(path_ / "Info.plist", std::ios::binary) << infoPlist;
    }

    ~BundleFolder() { std::filesystem::remove_all(path_); }
    BundleFolder(const BundleFolder&) = delete;
    BundleFolder& operator=(const BundleFolder&) = delete;

    [[nodiscard]] const std::filesystem::path& path() const { return path_; }

private:
    static inline int count = 0;
    std::filesystem::path path_;
};

constexpr std::string_view infoPlist = R"(<?xml version="1.0" encoding="UTF-8"?>
<plist version="1.0"><dict>
<key>CFBundleShortVersionString</key><string>5.2.1</string>
<key>Build</key><integer>42</integer>
<key>Negative</key><integer>-7</integer>
<key>Scale</key><real>1.5</real>
<key>Debug</key><true/>
<key>Languages</key><array><string>en</string></array>
</dict></plist>)";

} // namespace

TEST(Bundle, ReadsTheInformationOfItsFolder) {
    const BundleFolder folder(infoPlist);
    const Bundle bundle(folder.path());
    const Bundle::InfoDictionary expected{{"CFBundleShortVersionString", std::string("5.2.1")},
                                          {"Build", std::int64_t{42}},
                                          {"Negative", std::int64_t{-7}},
                                          {"Scale", 1.5},
                                          {"Debug", true}};
    EXPECT_EQ(bundle.infoDictionary(), expected);
}

TEST(Bundle, GivesAStringOnlyForAnEntryThatIsOne) {
    const Bundle bundle(Bundle::InfoDictionary{{"Text", std::string("a")}, {"Number", std::int64_t{1}}});
    EXPECT_EQ(bundle.string("Text"), "a");
    EXPECT_FALSE(bundle.string("Number"));
    EXPECT_FALSE(bundle.string("Missing"));
}

TEST(Bundle, KnowsNothingOfAFolderWithoutReadableInformation) {
    EXPECT_TRUE(Bundle(std::filesystem::path("/nowhere")).infoDictionary().empty());
    for (const std::string_view text : {"", "no property list", "<plist><array/></plist>", "bplist00"}) {
        const BundleFolder folder(text);
        EXPECT_TRUE(Bundle(folder.path()).infoDictionary().empty()) << text;
    }
}

TEST(Bundle, OfTheApplicationIsOneObject) {
    EXPECT_EQ(&Bundle::main(), &Bundle::main());
}

} // namespace tovrel::tests
