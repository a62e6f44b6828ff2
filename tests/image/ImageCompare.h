// Compares a picture with the one that a person has looked at and kept.
//
// Data: PNG files NAME.png in the baseline folder. Method: pixel by pixel, without tolerance; a
// difference writes NAME.out.png and NAME.diff.png (changed pixels red on the faded picture) into
// the build tree. With TERRAVO_UPDATE_BASELINES=1 in the environment the baselines are renewed.
#pragma once

#include <QImage>

#include <gtest/gtest.h>

#include <string>

namespace terravo {

/// Success when the picture equals the baseline of that name, pixel by pixel.
testing::AssertionResult EqualsBaseline(const QImage& picture, const std::string& name);

} // namespace terravo
