#pragma once

#include <Platform/URLLoading/Detail/BodySink.hpp>
#include <Platform/URLLoading/Detail/TransferObserver.hpp>

#include <string_view>

namespace tovrel {

/// A body that goes to another sink while somebody looks on.
class ObservedBody final : public BodySink {
public:
    ObservedBody(BodySink& sink, TransferObserver& observer) : sink_(&sink), observer_(&observer) {}

    [[nodiscard]] Failure write(std::string_view bytes) override {
        const Failure failure = sink_->write(bytes);
        if (!failure) {
            observer_->receiveBody(bytes);
        }
        return failure;
    }

    [[nodiscard]] Failure finish() override { return sink_->finish(); }

private:
    BodySink* sink_;
    TransferObserver* observer_;
};

} // namespace tovrel
