#include <Platform/Coding/DateStrategies.hpp>

#include <utility>

namespace tovrel {

DateDecodingStrategy DateDecodingStrategy::custom(Function function) {
    DateDecodingStrategy strategy(Kind::custom);
    strategy.function_ = std::make_shared<const Function>(std::move(function));
    return strategy;
}

DateEncodingStrategy DateEncodingStrategy::custom(Function function) {
    DateEncodingStrategy strategy(Kind::custom);
    strategy.function_ = std::make_shared<const Function>(std::move(function));
    return strategy;
}

} // namespace tovrel
