#include "Records.hpp"

#include <Platform/Coding/PropertyListDecoder.hpp>
#include <Platform/Coding/PropertyListEncoder.hpp>

#include <array>
#include <bit>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <limits>
#include <sstream>
#include <unistd.h>

namespace tovrel {
namespace {

using test::Box;
using test::Item;
using test::Page;

using Kind = DecodingError::Kind;

struct Everything {
    std::int64_t negative = -5;
    std::uint64_t large = std::numeric_limits<std::uint64_t>::max();
    double third = 1.0 / 3.0;
    bool yes = true;
    std::string text = "gr\xc3\xbc\xc3\x9f"
                       "e \xf0\x9f\x98\x80";
    Data bytes{std::string("\x00\x01\xff", 3)};
    Date date{123456789.123456789};
    std::vector<std::string> list{"a", "a", "b"};
    std::map<std::string, double> map{{"k", 0.1}};
    std::optional<std::string> absent;

    Everything() = default;
    static constexpr auto fields() {
        return std::tuple{Field<&Everything::negative, "negative">{}, Field<&Everything::large, "large">{},
                          Field<&Everything::third, "third">{},       Field<&Everything::yes, "yes">{},
                          Field<&Everything::text, "text">{},         Field<&Everything::bytes, "bytes">{},
                          Field<&Everything::date, "date">{},         Field<&Everything::list, "list">{},
                          Field<&Everything::map, "map">{},           Field<&Everything::absent, "absent">{}};
    }
    friend bool operator==(const Everything&, const Everything&) = default;
};

template <class T>
T decode(const Data& propertyList) {
    return PropertyListDecoder().decode<T>(propertyList);
}

template <class T>
T decodeXML(const std::string& body) {
    return decode<T>(Data("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<plist version=\"1.0\">" + body + "</plist>"));
}

template <class T>
DecodingError failure(const Data& propertyList) {
    try {
        PropertyListDecoder().decode<T>(propertyList);
    } catch (const DecodingError& error) {
        return error;
    }
    ADD_FAILURE() << "the property list was decoded";
    return DecodingError::dataCorrupted("nothing failed");
}

template <class T>
T roundTrip(const T& value) {
    return decode<T>(PropertyListEncoder().encode(value));
}

/// A binary property list of the given objects, the first being the root.
Data binary(const std::vector<std::string>& objects) {
    std::string bytes = "bplist00";
    std::string offsets;
    for (const std::string& object : objects) {
        offsets += static_cast<char>(bytes.size() >> 8);
        offsets += static_cast<char>(bytes.size());
        bytes += object;
    }
    const std::size_t table = bytes.size();
    const auto number = [](std::uint64_t value) {
        std::string text;
        for (int shift = 56; shift >= 0; shift -= 8) {
            text += static_cast<char>(value >> shift);
        }
        return text;
    };
    return Data(bytes + offsets + std::string(6, '\0') + "\x02\x01" + number(objects.size()) + number(0) +
                number(table));
}

/// A file that python reads or writes; removed at the end.
class TemporaryFile {
public:
    TemporaryFile()
        : path_(std::filesystem::temp_directory_path() /
                ("tovrel-property-list-" + std::to_string(::getpid()) + ".plist")) {}
    ~TemporaryFile() { std::filesystem::remove(path_); }
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;

    void write(const Data& data) const {
        std::ofstream(path_, std::ios::binary).write(data.view().data(), static_cast<std::streamsize>(data.size()));
    }

    Data read() const {
        std::ostringstream content;
        content << std::ifstream(path_, std::ios::binary).rdbuf();
        return Data(content.str());
    }

    /// Runs the script with the file as its only argument and returns what it prints.
    std::string runPython(const std::string& script) const {
        const std::string command = std::string(TOVREL_PYTHON) + " -c '" + script + "' " + path_.string();
        FILE* pipe = ::popen(command.c_str(), "r");
        std::string output;
        std::array<char, 256> chunk{};
        while (pipe != nullptr && std::fgets(chunk.data(), static_cast<int>(chunk.size()), pipe) != nullptr) {
            output += chunk.data();
        }
        EXPECT_EQ(pipe == nullptr ? -1 : ::pclose(pipe), 0);
        return output;
    }

private:
    std::filesystem::path path_;
};

TEST(PropertyList, ReadsBackWhatItWrites) {
    EXPECT_EQ(roundTrip(Everything()), Everything());
    Page page;
    page.items = {Item(1, "one", Date(0.1)), Item(2, "two")};
    page.next = "n";
    EXPECT_EQ(roundTrip(page), page);
}

TEST(PropertyList, KeepsEveryBitOfADouble) {
    for (const double number :
         {0.1, 1e300, 5e-324, -0.0, 1234567890.123456789, std::numeric_limits<double>::infinity()}) {
        EXPECT_EQ(std::bit_cast<std::uint64_t>(roundTrip(number)), std::bit_cast<std::uint64_t>(number));
    }
    EXPECT_TRUE(std::isnan(roundTrip(std::nan(""))));
}

TEST(PropertyList, KeepsEveryBitOfADate) {
    for (const double seconds : {0.0, 0.1, -1e10, 1e12, 7.123456789012345e8}) {
        EXPECT_EQ(roundTrip(Date(seconds)), Date(seconds));
    }
}

TEST(PropertyList, KeepsIntegersOfEveryWidth) {
    for (const std::int64_t number : std::initializer_list<std::int64_t>{
             0, 1, -1, 127, 128, 255, 256, 65535, 65536, 4294967295, 4294967296, -32769,
             std::numeric_limits<std::int64_t>::min(), std::numeric_limits<std::int64_t>::max()}) {
        EXPECT_EQ(roundTrip(number), number);
    }
    EXPECT_EQ(roundTrip(std::numeric_limits<std::uint64_t>::max()), std::numeric_limits<std::uint64_t>::max());
    EXPECT_EQ(roundTrip(std::uint64_t{1} << 63), std::uint64_t{1} << 63);
}

TEST(PropertyList, KeepsTextOfEveryKind) {
    for (const std::string& text :
         {std::string(), std::string("a\0b", 3), std::string(14, 'x'), std::string(15, 'x'), std::string(70000, 'x'),
          std::string("\xc3\xa9\xe2\x82\xac\xf0\x9f\x98\x80\xef\xbf\xbf")}) {
        EXPECT_EQ(roundTrip(text), text);
    }
}

TEST(PropertyList, KeepsEmptyAndLongContainers) {
    EXPECT_EQ(roundTrip(std::vector<int>()), std::vector<int>());
    EXPECT_EQ((roundTrip(std::map<std::string, int>())), (std::map<std::string, int>()));
    EXPECT_EQ(roundTrip(Data()), Data());
    std::vector<std::string> list;
    for (int index = 0; index < 70000; ++index) {
        list.push_back(std::to_string(index));
    }
    EXPECT_EQ(roundTrip(list), list);
}

TEST(PropertyList, StoresEqualStringsOnce) {
    const std::string text(1000, 'x');
    EXPECT_LT(PropertyListEncoder().encode(std::vector<std::string>(100, text)).size(), 2000u);
}

TEST(PropertyList, LeavesAbsentOptionalsOut) {
    EXPECT_EQ((decode<std::map<std::string, int>>(PropertyListEncoder().encode(Box<std::optional<int>>()))),
              (std::map<std::string, int>()));
}

TEST(PropertyList, RefusesToWriteWhatItHasNoFormFor) {
    const PropertyListEncoder encoder;
    EXPECT_THROW(encoder.encode(std::optional<int>()), EncodingError);
    EXPECT_THROW(encoder.encode(std::vector<std::optional<int>>(1)), EncodingError);
    EXPECT_THROW(encoder.encode(std::string("\xff")), EncodingError);
    EXPECT_THROW(encoder.encode(std::map<std::string, int>{{"\xff", 1}}), EncodingError);
    EXPECT_THROW(encoder.encode(Date(std::nan(""))), EncodingError);
    try {
        encoder.encode(Box<std::vector<Date>>({Date(), Date(std::numeric_limits<double>::infinity())}));
        FAIL();
    } catch (const EncodingError& error) {
        EXPECT_EQ(describe(error.path()), "value[1]");
    }
}

TEST(PropertyList, AcceptsAnIntegerWhereADoubleIsWanted) {
    EXPECT_EQ(decode<double>(PropertyListEncoder().encode(300)), 300.0);
    EXPECT_EQ(decode<double>(PropertyListEncoder().encode(-3)), -3.0);
    EXPECT_EQ(decode<int>(PropertyListEncoder().encode(300.0)), 300);
    EXPECT_EQ(failure<int>(PropertyListEncoder().encode(0.5)).kind(), Kind::dataCorrupted);
    EXPECT_EQ(failure<std::int64_t>(PropertyListEncoder().encode(std::nan(""))).kind(), Kind::dataCorrupted);
    EXPECT_EQ(failure<std::int8_t>(PropertyListEncoder().encode(300)).kind(), Kind::dataCorrupted);
}

TEST(PropertyList, RefusesEveryOtherTypeThanTheDescribedOne) {
    const PropertyListEncoder encoder;
    EXPECT_EQ(failure<std::string>(encoder.encode(1)).description(), "expected a string but found a number");
    EXPECT_EQ(failure<Date>(encoder.encode(1.0)).description(), "expected a date but found a number");
    EXPECT_EQ(failure<Data>(encoder.encode(std::string("AAAA"))).description(), "expected data but found a string");
    EXPECT_EQ(failure<int>(encoder.encode(Date())).description(), "expected an integer but found a date");
    EXPECT_EQ(failure<bool>(encoder.encode(Data())).description(), "expected a boolean but found data");
    EXPECT_EQ(describe(failure<Item>(encoder.encode(Box<int>(1))).path()), "id");
    EXPECT_EQ(failure<std::string>(binary({std::string(1, '\0')})).kind(), Kind::valueNotFound);
}

TEST(PropertyList, IsReadByAnotherImplementation) {
    TemporaryFile file;
    file.write(PropertyListEncoder().encode(Everything()));
    EXPECT_EQ(file.runPython("import plistlib, sys\n"
                             "p = plistlib.load(open(sys.argv[1], \"rb\"))\n"
                             "print(p[\"negative\"], p[\"large\"], p[\"third\"].hex(), p[\"yes\"], ascii(p[\"text\"]), "
                             "p[\"bytes\"].hex(), p[\"date\"], p[\"list\"], p[\"map\"], len(p))"),
              "-5 18446744073709551615 0x1.5555555555555p-2 True 'gr\\xfc\\xdfe \\U0001f600' 0001ff "
              "2004-11-29 21:33:09.123457 ['a', 'a', 'b'] {'k': 0.1} 9\n");
}

TEST(PropertyList, ReadsTheBinaryFormOfAnotherImplementation) {
    TemporaryFile file;
    file.runPython(
        "import plistlib, sys, datetime\n"
        "plistlib.dump({\"negative\": -5, \"large\": 2**64 - 1, \"third\": 1 / 3, \"yes\": True, "
        "\"text\": \"gr\\u00fc\\u00dfe \\U0001f600\", \"bytes\": b\"\\x00\\x01\\xff\", "
        "\"date\": datetime.datetime(2001, 1, 1) + datetime.timedelta(seconds=7.5), "
        "\"list\": [\"a\", \"a\", \"b\"], \"map\": {\"k\": 0.1}}, open(sys.argv[1], \"wb\"), fmt=plistlib.FMT_BINARY)");
    Everything expected;
    expected.date = Date(7.5);
    EXPECT_EQ(decode<Everything>(file.read()), expected);
}

TEST(PropertyList, ReadsTheXMLFormOfAnotherImplementation) {
    TemporaryFile file;
    file.runPython(
        "import plistlib, sys, datetime\n"
        "plistlib.dump({\"negative\": -5, \"large\": 2**64 - 1, \"third\": 1 / 3, \"yes\": True, "
        "\"text\": \"gr\\u00fc\\u00dfe \\U0001f600\", \"bytes\": b\"\\x00\\x01\\xff\", "
        "\"date\": datetime.datetime(2001, 1, 1, 0, 0, 7), "
        "\"list\": [\"a\", \"a\", \"b\"], \"map\": {\"k\": 0.1}}, open(sys.argv[1], \"wb\"), fmt=plistlib.FMT_XML)");
    Everything expected;
    expected.date = Date(7.0);
    EXPECT_EQ(decode<Everything>(file.read()), expected);
}

TEST(PropertyList, ReadsXMLText) {
    EXPECT_EQ(decodeXML<std::string>("<string>a &lt; b</string>"), "a < b");
    EXPECT_EQ((decodeXML<std::vector<int>>("<array><integer>1</integer><integer>-2</integer></array>")),
              (std::vector<int>{1, -2}));
    EXPECT_EQ(decodeXML<Box<bool>>("<dict><key>value</key><true/></dict>").value, true);
}

TEST(PropertyList, RefusesBytesThatAreNoPropertyList) {
    for (const std::string& bytes :
         {std::string(), std::string("x"), std::string("{\"a\": 1}"), std::string("bplist00"),
          std::string("bplist15") + std::string(64, '\0'), std::string("<plist>"), std::string("<?xml"),
          std::string("<plist><dict><key>a</key></plist>"), std::string(100, '\xff')}) {
        const auto error = failure<Item>(Data(bytes));
        EXPECT_EQ(error.kind(), Kind::dataCorrupted) << bytes;
        EXPECT_TRUE(error.path().empty()) << bytes;
    }
}

TEST(PropertyList, RefusesEveryTruncation) {
    const Data whole = PropertyListEncoder().encode(Everything());
    for (std::size_t length = 0; length < whole.size(); ++length) {
        EXPECT_THROW(decode<Everything>(Data(whole.view().substr(0, length))), DecodingError) << length;
    }
}

TEST(PropertyList, SurvivesEveryDamagedByte) {
    const Data whole = PropertyListEncoder().encode(Everything());
    std::size_t refused = 0;
    for (std::size_t position = 0; position < whole.size(); ++position) {
        for (const char flip : {'\x01', '\x80', '\xff'}) {
            std::string bytes = whole.string();
            bytes[position] = static_cast<char>(bytes[position] ^ flip);
            try {
                decode<Everything>(Data(bytes));
            } catch (const DecodingError&) {
                ++refused;
            }
        }
    }
    EXPECT_GT(refused, whole.size());
}

TEST(PropertyList, RefusesReferencesToNowhereAndInCircles) {
    EXPECT_EQ(failure<std::vector<int>>(binary({"\xa1\x05"})).kind(), Kind::dataCorrupted);
    EXPECT_EQ(failure<std::vector<int>>(binary({std::string("\xa1\x00", 2)})).kind(), Kind::dataCorrupted);
    EXPECT_EQ(failure<std::vector<int>>(binary({"\xa1\x01", std::string("\xa1\x00", 2)})).kind(), Kind::dataCorrupted);
}

TEST(PropertyList, RefusesFilesThatUnfoldWithoutEnd) {
    std::vector<std::string> objects;
    for (int level = 1; level <= 40; ++level) {
        objects.push_back(std::string("\xaf\x10\x08", 3) + std::string(8, static_cast<char>(level)));
    }
    objects.push_back("\x09");
    EXPECT_EQ(failure<test::Page>(binary(objects)).description(),
              "the binary property list is damaged: it unfolds to more than its size allows");
}

TEST(PropertyList, RefusesObjectsThatReachOutside) {
    for (const std::string& object :
         {std::string("\x5e"
                      "ab"),
          std::string("\x4f\x13\xff\xff\xff\xff\xff\xff\xff\xff"), std::string("\x6f\x12\x7f\xff\xff\xff"),
          std::string("\xaf\x13\x7f\xff\xff\xff\xff\xff\xff\xff"), std::string("\xdf\x12\xff\xff\xff\xff"),
          std::string("\x13\x01"), std::string("\x23\x01"), std::string("\x33\x01"), std::string("\x5f"),
          std::string("\x5f\x51\x01")}) {
        EXPECT_EQ(failure<std::string>(binary({object})).kind(), Kind::dataCorrupted);
    }
}

TEST(PropertyList, RefusesObjectsOfUnknownTypesAndSizes) {
    for (const std::string& object :
         {std::string("\x0f"), std::string("\x80\x01"), std::string("\xc0"),
          std::string("\x15") + std::string(32, '\0'), std::string("\x20\x01"), std::string("\x32\x01\x01\x01\x01"),
          std::string("\xd1\x00\x00", 3), std::string("\x14") + std::string(16, '\x01')}) {
        EXPECT_EQ(failure<int>(binary({object})).kind(), Kind::dataCorrupted);
    }
}

TEST(PropertyList, RefusesTextOutsideItsEncoding) {
    EXPECT_EQ(failure<std::string>(binary({"\x51\xff"})).kind(), Kind::dataCorrupted);
    EXPECT_EQ(failure<std::string>(binary({std::string("\x61\xd8\x00", 3)})).kind(), Kind::dataCorrupted);
    EXPECT_EQ(failure<std::string>(binary({std::string("\x62\xd8\x00\x00\x41", 5)})).kind(), Kind::dataCorrupted);
    EXPECT_EQ(failure<std::string>(binary({std::string("\x61\xdc\x00", 3)})).kind(), Kind::dataCorrupted);
}

TEST(PropertyList, ReadsShortRealsAndWideIntegers) {
    EXPECT_EQ(decode<double>(binary({std::string("\x22\x3f\x00\x00\x00", 5)})), 0.5);
    EXPECT_EQ(decode<std::int64_t>(binary({"\x14" + std::string(16, '\xff')})), -1);
    EXPECT_EQ(decode<std::uint64_t>(binary({"\x14" + std::string(8, '\0') + std::string(8, '\xff')})),
              std::numeric_limits<std::uint64_t>::max());
}

TEST(PropertyList, RefusesXMLThatNestsTooDeeply) {
    std::string deep;
    for (int level = 0; level < 100000; ++level) {
        deep += "<array>";
    }
    EXPECT_EQ(failure<int>(Data("<plist version=\"1.0\">" + deep)).description(),
              "the property list is nested too deeply");
}

TEST(PropertyList, RefusesDocumentsThatAreTooLarge) {
    MutableData large;
    large.append("bplist00");
    large.resize((std::size_t{16} << 20) + 1);
    EXPECT_EQ(failure<int>(large.freeze()).description(), "the property list is too large");
}

} // namespace
} // namespace tovrel
