#pragma once

#include <Platform/URLLoading/Detail/Cache/DiskTier.hpp>
#include <Platform/URLLoading/Detail/Cache/DiskWriter.hpp>

#include <gtest/gtest.h>

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace tovrel::tests {

/// Bytes that are unlike those of any other seed.
inline std::string bytesOf(std::size_t size, std::uint32_t seed = 1) {
    std::string bytes(size, '\0');
    std::uint64_t state = seed * 0x9e3779b97f4a7c15U + 1;
    for (char& byte : bytes) {
        state = state * 6364136223846793005U + 1442695040888963407U;
        byte = static_cast<char>(state >> 56U);
    }
    return bytes;
}

/// A folder of its own for each test, and a clock that stands still.
class DiskTest : public ::testing::Test {
protected:
    static constexpr std::uint64_t capacity = std::uint64_t{20} << 20U;

    DiskTest() : clock_(std::make_shared<std::atomic<double>>(1000.0)) {
        std::string pattern = (std::filesystem::temp_directory_path() / "disk-XXXXXX").string();
        if (::mkdtemp(pattern.data()) == nullptr) {
            throw std::runtime_error("no temporary folder");
        }
        parent_ = pattern;
    }

    ~DiskTest() override {
        std::error_code error;
        std::filesystem::remove_all(parent_, error);
    }

    [[nodiscard]] std::filesystem::path folder() const { return parent_ / "cache"; }
    [[nodiscard]] std::filesystem::path file() const { return folder() / "responses.sqlite"; }

    [[nodiscard]] std::shared_ptr<DiskTier> tier(std::uint64_t bytes = capacity) const {
        return DiskTier::make(folder(), bytes, [clock = clock_] { return Date(clock->load()); });
    }

    void advance(double seconds) { *clock_ = clock_->load() + seconds; }

    /// Stores a response, its body in pieces as a network would bring it.
    static void store(DiskTier& tier, const std::string& url, const std::string& variant, const std::string& head,
                      const std::string& body) {
        const std::shared_ptr<DiskWriter> writer = tier.write(url);
        ASSERT_NE(writer, nullptr);
        constexpr std::size_t piece = 10000;
        for (std::size_t start = 0; start < body.size(); start += piece) {
            writer->append(std::string_view(body).substr(start, piece));
        }
        writer->commit(variant, head);
    }

    static void store(const std::shared_ptr<DiskTier>& tier, const std::string& url, const std::string& variant,
                      const std::string& head, const std::string& body) {
        store(*tier, url, variant, head, body);
    }

    /// The one response of a URL: its head and its body; absent if there is none or its body is gone.
    static std::optional<std::pair<std::string, std::string>> load(const std::shared_ptr<DiskTier>& tier,
                                                                   const std::string& url) {
        const std::vector<DiskEntry> entries = tier->find(url);
        if (entries.size() != 1) {
            return std::nullopt;
        }
        const std::optional<Data> body = tier->body(entries.front());
        return body ? std::optional(std::pair(entries.front().head, body->string())) : std::nullopt;
    }

    static std::optional<std::string> loadBody(const std::shared_ptr<DiskTier>& tier, const std::string& url) {
        const auto found = load(tier, url);
        return found ? std::optional(found->second) : std::nullopt;
    }

    std::filesystem::path parent_;
    std::shared_ptr<std::atomic<double>> clock_;
};

} // namespace tovrel::tests
