#pragma once

#include <Platform/System/Export.hpp>
#include <TovrelTesting/FakeWebRequestExecutor.hpp>
#include <TovrelTesting/ScriptedEnvelopes.hpp>
#include <TovrelWebServices/Services/ApiWebService.hpp>

#include <memory>

namespace tovrel::testing {

/// An API service without a server: it answers with envelopes by a script. It logs no one in or out and retries
/// nothing. Thread-safe.
class TOVREL_EXPORT FakeApiWebService final : public ApiWebService, public ScriptedEnvelopes {
public:
    static std::shared_ptr<FakeApiWebService> make(TovrelEnvironment stage = TovrelEnvironment::test);
    ~FakeApiWebService() override;

    /// What `run` sends through.
    [[nodiscard]] const std::shared_ptr<FakeWebRequestExecutor>& fakeExecutor() const { return executor_; }

    [[nodiscard]] std::shared_ptr<WebRequestExecutor> executor() const override { return executor_; }
    [[nodiscard]] TovrelApiEnvironment environment() const override { return TovrelApiEnvironment(stage_); }
    [[nodiscard]] Async<AnyResponse> executeAny(Request request, ApiPayloadType payload) const override;

private:
    explicit FakeApiWebService(TovrelEnvironment stage);

    TovrelEnvironment stage_;
    std::shared_ptr<FakeWebRequestExecutor> executor_ = FakeWebRequestExecutor::make();
};

} // namespace tovrel::testing
