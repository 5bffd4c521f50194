#pragma once

#include <Platform/URLLoading/Detail/Cache/DiskFixture.hpp>

#include <optional>
#include <random>
#include <string>
#include <string_view>

namespace tovrel::tests {

/// Calls of every kind upon one tier, with responses that prove themselves: a head names the body that belongs to it.
class DiskTraffic {
public:
    DiskTraffic(std::shared_ptr<DiskTier> tier, std::uint32_t seed) : tier_(std::move(tier)), random_(seed) {}

    static constexpr std::uint32_t urls = 40;

    static std::string url(std::uint32_t number) { return "https://api.example/" + std::to_string(number); }

    static std::string head(std::string_view url, std::size_t size, std::uint32_t seed) {
        return std::string(url) + ' ' + std::to_string(size) + ' ' + std::to_string(seed);
    }

    /// Whether head and body belong together and to the URL.
    static bool isRight(std::string_view url, const std::string& head, std::string_view body) {
        if (!std::string_view(head).starts_with(std::string(url) + ' ')) {
            return false;
        }
        const std::size_t separator = head.rfind(' ');
        const auto seed = static_cast<std::uint32_t>(std::stoul(head.substr(separator + 1)));
        const std::size_t size = std::stoul(head.substr(url.size() + 1, separator - url.size() - 1));
        return body == bytesOf(size, seed);
    }

    void store(std::uint32_t number, std::size_t size) {
        const auto seed = static_cast<std::uint32_t>(random_());
        if (const std::shared_ptr<DiskWriter> writer = tier_->write(url(number))) {
            writer->append(bytesOf(size, seed));
            writer->commit("v", head(url(number), size, seed));
        }
    }

    /// Looks a response up; false for wrong bytes.
    bool check(std::uint32_t number) {
        for (const DiskEntry& entry : tier_->find(url(number))) {
            const std::optional<Data> body = tier_->body(entry);
            if (body && !isRight(url(number), entry.head, body->view())) {
                return false;
            }
            found_ += body ? 1 : 0;
        }
        return true;
    }

    bool checkAll() {
        for (std::uint32_t number = 0; number < urls; ++number) {
            if (!check(number)) {
                return false;
            }
        }
        return true;
    }

    /// Any call; false for wrong bytes.
    bool step() {
        const auto number = static_cast<std::uint32_t>(random_() % urls);
        switch (random_() % 16) {
        case 0:
            tier_->remove(url(number));
            return true;
        case 1:
            tier_->remove(url(number), "v");
            return true;
        case 2:
            tier_->touch(url(number), "v");
            return true;
        case 3: {
            const std::shared_ptr<DiskWriter> writer = tier_->write(url(number));
            if (writer != nullptr) {
                writer->append(bytesOf(random_() % 200000));
            }
            return true;
        }
        case 4:
            tier_->mayContain(url(number));
            return true;
        case 5:
        case 6:
        case 7:
            store(number, random_() % 200000);
            return true;
        case 8:
        case 9:
        case 10:
            store(number, random_() % 5000);
            return true;
        default:
            return check(number);
        }
    }

    /// Bodies found so far.
    [[nodiscard]] int found() const { return found_; }

private:
    std::shared_ptr<DiskTier> tier_;
    std::mt19937 random_;
    int found_ = 0;
};

} // namespace tovrel::tests
