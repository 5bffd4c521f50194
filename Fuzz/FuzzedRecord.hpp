#pragma once

#include <Platform/Coding/Coding.hpp>

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <tuple>
#include <vector>

namespace tovrel::fuzz {

/// A record with a member of every kind, and of its own.
struct Record {
    std::optional<bool> flag;
    std::optional<std::int8_t> small8;
    std::optional<std::uint16_t> unsigned16;
    std::optional<std::int64_t> signed64;
    std::optional<std::uint64_t> unsigned64;
    std::optional<float> single;
    std::optional<double> number;
    std::optional<std::string> text;
    std::optional<Data> bytes;
    std::optional<Date> createdAt;
    std::map<std::string, double> counts;
    std::vector<Record> children;
    std::optional<std::string> lenient;
    double made = 0.0;

    Record() = default;
    static double make() { return 1.0; }
    static std::map<std::string, double> makeCounts() { return {}; }
    static constexpr auto fields() {
        return std::tuple{Field<&Record::flag, "flag">{},
                          Field<&Record::small8, "small8">{},
                          Field<&Record::unsigned16, "unsigned16">{},
                          Field<&Record::signed64, "signed64">{},
                          Field<&Record::unsigned64, "unsigned64">{},
                          Field<&Record::single, "single">{},
                          Field<&Record::number, "number">{},
                          Field<&Record::text, "text">{},
                          Field<&Record::bytes, "bytes">{},
                          Field<&Record::createdAt, "createdAt">{},
                          Default<&Record::counts, "counts", &Record::makeCounts>{},
                          Lenient<&Record::children, "children">{},
                          Lenient<&Record::lenient, "lenient">{},
                          Default<&Record::made, "made", &Record::make>{}};
    }
};

} // namespace tovrel::fuzz
