#pragma once

#include <TovrelWebServices/Services/RetryLogicStrategy.hpp>

#include <memory>

namespace tovrel {

/// Never retries; what every request starts with.
class TOVREL_EXPORT NoRetryLogicStrategy final : public RetryLogicStrategy {
public:
    static std::shared_ptr<NoRetryLogicStrategy> make();
    ~NoRetryLogicStrategy() override;

    [[nodiscard]] bool shouldRetry() const override { return false; }
    [[nodiscard]] Async<void> willRetry() override;

private:
    NoRetryLogicStrategy();
};

} // namespace tovrel
