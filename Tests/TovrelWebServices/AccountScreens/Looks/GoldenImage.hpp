#pragma once

#include <gtest/gtest.h>

#include <QtGui/QImage>
#include <string>

namespace tovrel::tests {

/// Whether an image looks as the one kept under this name. A pixel differs when a channel is off by more than 24 of
/// 255; one pixel in 20000 may differ, which lets another version of the font renderer pass and not a line, a letter or
/// a colour. When too many do, the new image and one with the differences in red are written, and the failure says
/// where. With TOVREL_WRITE_GOLDEN_IMAGES set in the environment the image is kept instead.
[[nodiscard]] ::testing::AssertionResult looksAsKept(const QImage& image, const std::string& name);

} // namespace tovrel::tests
