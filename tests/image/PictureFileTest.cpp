#include "plot2d/PictureFile.h"

#include "support/TemporaryFolder.h"
#include "util/AppError.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <random>

namespace terravo {
namespace {

// A picture whose every colour appears, the last one at the last pixel only.
QImage PictureOf(int colours, QImage::Format format = QImage::Format_RGB32) {
    QImage picture(97, 53, format);
    picture.setDotsPerMeterX(3780);
    picture.setDotsPerMeterY(7559);
    std::mt19937 random(7);
    const auto colour = [](int i) {
        // Neighbours in one channel, all the others too: numbers that would meet in a poor hash.
        return qRgba(i % 16 * 16, i / 16 % 64 * 4, i / 1024 + i % 3, 255 - (i % 5) * 40);
    };
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            const int place = y * picture.width() + x;
            const int i = place < colours - 1 ? place : static_cast<int>(random() % 7) % colours;
            picture.setPixel(x, y, colour(i));
        }
    }
    picture.setPixel(picture.width() - 1, picture.height() - 1, colour(colours - 1));
    return picture;
}

QImage Reread(const QImage& picture) {
    const std::string bytes = PngBytes(picture);
    return QImage::fromData(QByteArray(bytes.data(), static_cast<qsizetype>(bytes.size())), "PNG");
}

TEST(PictureFile, ReadsBackAsTheSamePixelsWithAndWithoutAPalette) {
    struct Case {
        int colours;
        bool palette;
    };
    for (const Case& c :
         {Case{1, true}, {2, true}, {255, true}, {256, true}, {257, false}, {1280, false}}) {
        const QImage picture = PictureOf(c.colours);
        const QImage read = Reread(picture);
        EXPECT_EQ(read.format() == QImage::Format_Indexed8, c.palette) << c.colours;
        EXPECT_EQ(read.convertToFormat(QImage::Format_RGB32), picture) << c.colours;
        EXPECT_EQ(read.dotsPerMeterX(), 3780);
        EXPECT_EQ(read.dotsPerMeterY(), 7559);
    }
}

TEST(PictureFile, KeepsTransparencyAndIgnoresTheUnusedByteOfOpaquePixels) {
    const QImage clear = PictureOf(40, QImage::Format_ARGB32);
    EXPECT_EQ(Reread(clear).convertToFormat(QImage::Format_ARGB32), clear);

    QImage opaque = PictureOf(256);
    auto* words = reinterpret_cast<QRgb*>(opaque.bits());
    for (int i = 0; i < opaque.width() * opaque.height(); ++i) {
        words[i] &= i % 2 == 0 ? 0x00FFFFFFU : 0xFFFFFFFFU;
    }
    const QImage read = Reread(opaque);
    EXPECT_EQ(read.format(), QImage::Format_Indexed8) << "one colour, not two";
    EXPECT_EQ(read.convertToFormat(QImage::Format_RGB32), opaque);
}

TEST(PictureFile, LeavesTheOldFileWholeWhenItFails) {
    const test::TemporaryFolder folder;
    const std::string path = folder.Write("map.png", "old");
    try {
        SavePicture(QImage(), path);
        ADD_FAILURE() << "an empty picture was saved";
    } catch (const AppError& error) {
        EXPECT_EQ(error.number(), ErrorNumber::kDeviceIo);
        EXPECT_EQ(std::string(error.what()).rfind(path + ": ", 0), 0U) << error.what();
    }
    EXPECT_EQ(folder.Read("map.png"), "old");
    SavePicture(PictureOf(3), path);
    EXPECT_EQ(QImage(QString::fromStdString(path)).size(), QSize(97, 53));
    EXPECT_EQ(folder.Names().size(), 1U);
}

} // namespace
} // namespace terravo
