#pragma once

#include <Platform/System/Export.hpp>
#include <TovrelTesting/FakeWebRequestExecutor.hpp>
#include <TovrelTesting/ScriptedEnvelopes.hpp>
#include <TovrelWebServices/Services/CdnWebService.hpp>

#include <memory>

namespace tovrel::testing {

/// A CDN service without a server: it answers with envelopes by a script of its own, and with raw responses by that of
/// its executor. It logs no one in or out and retries nothing. Thread-safe.
class TOVREL_EXPORT FakeCdnWebService final : public CdnWebService, public ScriptedEnvelopes {
public:
    static std::shared_ptr<FakeCdnWebService> make(TovrelEnvironment stage = TovrelEnvironment::test);
    ~FakeCdnWebService() override;

    /// What `run` and the form of `execute` without a payload type send through.
    [[nodiscard]] const std::shared_ptr<FakeWebRequestExecutor>& fakeExecutor() const { return executor_; }

    using CdnWebService::execute;

    [[nodiscard]] std::shared_ptr<WebRequestExecutor> executor() const override { return executor_; }
    [[nodiscard]] TovrelCdnEnvironment environment() const override { return TovrelCdnEnvironment(stage_); }
    [[nodiscard]] Async<WebResponse> execute(Request request) const override;
    [[nodiscard]] Async<AnyResponse> executeAny(Request request, ApiPayloadType payload) const override;

private:
    explicit FakeCdnWebService(TovrelEnvironment stage);

    TovrelEnvironment stage_;
    std::shared_ptr<FakeWebRequestExecutor> executor_ = FakeWebRequestExecutor::make();
};

} // namespace tovrel::testing
