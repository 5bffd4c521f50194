#pragma once

#include <TovrelWebServices/Services/HttpWebService.hpp>

#include <memory>

namespace tovrel {

/// The plain HTTP service.
class TOVREL_EXPORT DefaultHttpWebService final : public HttpWebService {
public:
    static std::shared_ptr<DefaultHttpWebService> make(std::shared_ptr<WebRequestExecutor> executor);
    ~DefaultHttpWebService() override;

    [[nodiscard]] std::shared_ptr<WebRequestExecutor> executor() const override { return executor_; }

private:
    explicit DefaultHttpWebService(std::shared_ptr<WebRequestExecutor> executor);

    std::shared_ptr<WebRequestExecutor> executor_;
};

} // namespace tovrel
