// The icons that are installed: each of its size, all of one picture.
#include <QImage>

#include <cstdlib>
#include <gtest/gtest.h>

namespace {

QImage Icon(int size) {
    return QImage(QString("%1/icons/quorvanta-%2.png").arg(PACKAGING_DIR).arg(size))
        .convertToFormat(QImage::Format_ARGB32);
}

// The mean difference of the channels, from 0 to 255.
double Difference(const QImage& a, const QImage& b) {
    qint64 sum = 0;
    for (int y = 0; y < a.height(); ++y)
        for (int x = 0; x < a.width(); ++x) {
            const QRgb p = a.pixel(x, y);
            const QRgb q = b.pixel(x, y);
            sum += std::abs(qAlpha(p) - qAlpha(q)) + std::abs(qRed(p) - qRed(q)) +
                   std::abs(qGreen(p) - qGreen(q)) + std::abs(qBlue(p) - qBlue(q));
        }
    return static_cast<double>(sum) / (4.0 * a.width() * a.height());
}

TEST(Icons, AreOnePictureInEachSize) {
    const QImage large = Icon(512);
    ASSERT_FALSE(large.isNull());
    for (const int size : {16, 22, 24, 32, 48, 64, 128, 256, 512}) {
        const QImage icon = Icon(size);
        ASSERT_EQ(icon.size(), QSize(size, size)) << size;
        const QImage scaled =
            large.scaled(size, size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
        EXPECT_LT(Difference(icon, scaled), 12) << size;
    }
    // Two pictures would differ: the picture upside down does.
    EXPECT_GT(Difference(Icon(64), Icon(64).mirrored()), 24);
}

} // namespace
