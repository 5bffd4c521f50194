#include "GoldenImage.hpp"

#include <algorithm>
#include <cstdlib>
#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QtGlobal>
#include <QtGui/QImageWriter>

namespace tovrel::tests {

namespace {

constexpr int channelTolerance = 24;
constexpr int pixelsPerDifferingPixel = 20000;

QString pathIn(const char* folder, const std::string& name, const char* ending) {
    return QDir(QString::fromUtf8(folder)).filePath(QString::fromStdString(name) + QString::fromUtf8(ending));
}

bool write(const QImage& image, const QString& path) {
    QDir().mkpath(QFileInfo(path).path());
    QImageWriter writer(path, "png");
    writer.setCompression(100);
    return writer.write(image);
}

bool differ(QRgb a, QRgb b) {
    return std::max({std::abs(qRed(a) - qRed(b)), std::abs(qGreen(a) - qGreen(b)), std::abs(qBlue(a) - qBlue(b))}) >
           channelTolerance;
}

/// Turns the differing pixels of a faded copy red; how many they are.
qint64 markDifferences(const QImage& image, const QImage& kept, QImage& marked) {
    qint64 count = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (differ(image.pixel(x, y), kept.pixel(x, y))) {
                marked.setPixel(x, y, qRgb(255, 0, 0));
                ++count;
            } else {
                const int faded = 170 + qGray(image.pixel(x, y)) / 4;
                marked.setPixel(x, y, qRgb(faded, faded, faded));
            }
        }
    }
    return count;
}

::testing::AssertionResult failure(const QImage& image, const std::string& name, const std::string& reason) {
    const QString path = pathIn(TOVREL_DIFFERING_IMAGES, name, ".png");
    write(image, path);
    return ::testing::AssertionFailure() << name << ' ' << reason << "; it is now " << path.toStdString();
}

} // namespace

::testing::AssertionResult looksAsKept(const QImage& grabbed, const std::string& name) {
    const QImage image = grabbed.convertToFormat(QImage::Format_RGB888);
    const QString keptPath = pathIn(TOVREL_GOLDEN_IMAGES, name, ".png");
    if (qEnvironmentVariableIsSet("TOVREL_WRITE_GOLDEN_IMAGES")) {
        if (!write(image, keptPath)) {
            return ::testing::AssertionFailure() << "cannot write " << keptPath.toStdString();
        }
        return ::testing::AssertionSuccess();
    }
    const QImage kept(keptPath);
    if (kept.isNull()) {
        return failure(image, name, "is not kept");
    }
    if (kept.size() != image.size()) {
        return failure(image, name, "has another size");
    }
    QImage marked(image.size(), QImage::Format_RGB888);
    const qint64 count = markDifferences(image, kept, marked);
    if (count * pixelsPerDifferingPixel <= qint64(image.width()) * image.height()) {
        return ::testing::AssertionSuccess();
    }
    const QString difference = pathIn(TOVREL_DIFFERING_IMAGES, name, "-difference.png");
    write(marked, difference);
    return failure(image, name,
                   "differs in " + std::to_string(count) + " pixels, in red in " + difference.toStdString());
}

} // namespace tovrel::tests
