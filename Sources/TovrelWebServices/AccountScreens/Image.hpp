#pragma once

#include <Platform/System/Export.hpp>

#include <QtCore/QUrl>
#include <utility>

namespace tovrel {

/// A picture by its address: a resource ("qrc:/…"), a file or anything else that a QML `Image` loads. A value.
class TOVREL_EXPORT Image {
public:
    explicit Image(QUrl source) : source_(std::move(source)) {}

    [[nodiscard]] const QUrl& source() const { return source_; }

    friend bool operator==(const Image&, const Image&) = default;

private:
    QUrl source_;
};

} // namespace tovrel
