#include <Platform/Coding/JSONEncoder.hpp>
#include <Platform/Coding/Private/JSONWriter.hpp>

namespace tovrel {

Data JSONEncoder::encode(const detail::TypeTable& type, const void* value) const {
    detail::JSONWriter writer(*this);
    detail::EncodingEngine<detail::JSONWriter> engine(writer);
    engine.encode(type, value);
    return writer.finish();
}

} // namespace tovrel
