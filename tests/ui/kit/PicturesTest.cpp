// SPDX-License-Identifier: MIT
#include "ui/kit/Pictures.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QToolButton>

#include "ui/kit/BitmapReader.h"

namespace kestrin::ui::kit {
namespace {

/// A folder with pictures of 48 x 48 and 96 x 48 pixels.
class PicturesInAFolder : public testing::Test {
 protected:
  void SetUp() override {
    ASSERT_TRUE(m_folder.isValid());
    ASSERT_TRUE(Colored(48, 48, Qt::red).save(m_folder.filePath("square.bmp")));
    ASSERT_TRUE(Colored(48, 48, Qt::gray).save(m_folder.filePath("square_off.bmp")));
    ASSERT_TRUE(Colored(96, 48, Qt::red).save(m_folder.filePath("wide.bmp")));
  }

  static QImage Colored(int width, int height, const QColor& color) {
    QImage picture(width, height, QImage::Format_RGB32);
    picture.fill(color);
    return picture;
  }

  void Write(const QString& file, const QByteArray& bytes) const {
    QFile out(m_folder.filePath(file));
    ASSERT_TRUE(out.open(QIODevice::WriteOnly));
    ASSERT_EQ(out.write(bytes), bytes.size());
  }

  [[nodiscard]] QByteArray Read(const QString& file) const {
    QFile in(m_folder.filePath(file));
    return in.open(QIODevice::ReadOnly) ? in.readAll() : QByteArray();
  }

  QTemporaryDir m_folder{QDir::tempPath() + "/kestrin pictures XXXXXX"};
  Pictures m_pictures{m_folder.path()};
};

TEST_F(PicturesInAFolder, APictureBecomesAnIcon) {
  const QImage icon = m_pictures.Icon("square.bmp").pixmap(QSize(24, 24), 1.0).toImage();
  EXPECT_EQ(icon.size(), QSize(24, 24));
  EXPECT_EQ(icon.pixelColor(12, 12), QColor(Qt::red));
}

TEST_F(PicturesInAFolder, AnIconHasTwiceThePixelsAtTwoHundredPercent) {
  const QPixmap icon = m_pictures.Icon("square.bmp").pixmap(QSize(24, 24), 2.0);
  EXPECT_EQ(icon.size(), QSize(48, 48));
  EXPECT_EQ(icon.devicePixelRatio(), 2.0);
}

TEST_F(PicturesInAFolder, ADisabledButtonHasAPictureOfItsOwn) {
  const QIcon icon = m_pictures.Icon("square.bmp", "square_off.bmp");
  EXPECT_EQ(icon.pixmap(QSize(24, 24), 1.0, QIcon::Normal).toImage().pixelColor(12, 12), QColor(Qt::red));
  EXPECT_EQ(icon.pixmap(QSize(24, 24), 1.0, QIcon::Disabled).toImage().pixelColor(12, 12), QColor(Qt::gray));
}

TEST_F(PicturesInAFolder, AMissingPictureIsAnEmptyIcon) {
  EXPECT_TRUE(m_pictures.Icon("missing.bmp").isNull());
  EXPECT_TRUE(m_pictures.Icon("missing.bmp", "square_off.bmp").isNull());
  EXPECT_FALSE(m_pictures.Icon("square.bmp", "missing.bmp").isNull());
  EXPECT_TRUE(m_pictures.Tinted("missing.bmp", Qt::blue).isNull());
  EXPECT_TRUE(m_pictures.Pixmap("missing.bmp", {24, 24}, 2.0).isNull());
  EXPECT_TRUE(Pictures("no such folder").Icon("square.bmp").isNull());
}

TEST_F(PicturesInAFolder, ADamagedPictureIsAnEmptyIcon) {
  const QByteArray whole = Read("square.bmp");
  ASSERT_GT(whole.size(), 54);
  Write("empty.bmp", {});
  Write("text.bmp", "This is no picture.");
  Write("header.bmp", whole.left(30));
  QByteArray huge = whole;
  for (const int at : {18, 22}) huge.replace(at, 4, QByteArray("\xff\xff\xff\x7f", 4));
  Write("huge.bmp", huge);
  for (const char* file : {"empty.bmp", "text.bmp", "header.bmp", "huge.bmp"}) {
    EXPECT_TRUE(m_pictures.Icon(file).isNull()) << file;
    EXPECT_TRUE(m_pictures.Pixmap(file, {24, 24}, 1.0).isNull()) << file;
  }
}

TEST_F(PicturesInAFolder, AButtonWithoutItsPictureKeepsItsText) {
  QToolButton button;
  button.setText("Open");
  button.setToolButtonStyle(Qt::ToolButtonTextUnderIcon);
  button.setIcon(m_pictures.Icon("missing.bmp"));
  button.resize(button.sizeHint());
  const QImage with = button.grab().toImage();
  button.setText(" ");
  EXPECT_NE(with, button.grab().toImage());
}

TEST_F(PicturesInAFolder, APixmapFitsItsPlaceAndKeepsItsShape) {
  const QPixmap wide = m_pictures.Pixmap("wide.bmp", {32, 32}, 2.0);
  EXPECT_EQ(wide.size(), QSize(64, 32));
  EXPECT_EQ(wide.devicePixelRatio(), 2.0);
  EXPECT_EQ(wide.deviceIndependentSize(), QSizeF(32, 16));
}

TEST_F(PicturesInAFolder, ATintedPictureIsTheSameShapeInOneColour) {
  const Pictures program(QCoreApplication::applicationDirPath());
  const QImage plain = program.Icon("open.bmp").pixmap(QSize(96, 96), 1.0).toImage();
  const QImage tinted = program.Tinted("open.bmp", Qt::white).pixmap(QSize(96, 96), 1.0).toImage();
  ASSERT_EQ(plain.size(), tinted.size());
  ASSERT_EQ(plain.size(), QSize(96, 96));
  for (int y = 0; y < plain.height(); ++y) {
    for (int x = 0; x < plain.width(); ++x) {
      ASSERT_EQ(plain.pixelColor(x, y).alpha(), tinted.pixelColor(x, y).alpha());
      if (tinted.pixelColor(x, y).alpha() == 255) {
        ASSERT_EQ(tinted.pixelColor(x, y), QColor(Qt::white));
      }
    }
  }
}

TEST(BitmapReader, TakesWhatTheBuildMakesAsQtReadsIt) {
  int pictures = 0;
  for (const QString& name : QDir(KESTRIN_PICTURES).entryList({"*.bmp"})) {
    const QString path = QDir(KESTRIN_PICTURES).filePath(name);
    const QImage expected = QImage(path).convertToFormat(QImage::Format_ARGB32);
    ASSERT_FALSE(expected.isNull()) << name.toStdString();
    EXPECT_EQ(ReadBitmap(path), expected) << name.toStdString();
    ++pictures;
  }
  EXPECT_GT(pictures, 15);
}

TEST(BitmapReader, FileThatEndsEarlyAnywhereIsNoPicture) {
  QFile whole(QDir(KESTRIN_PICTURES).filePath("open.bmp"));
  ASSERT_TRUE(whole.open(QIODevice::ReadOnly));
  const QByteArray bytes = whole.readAll();
  const QTemporaryDir folder;
  for (const qsizetype size :
       {qsizetype{0}, qsizetype{1}, qsizetype{53}, qsizetype{137}, qsizetype{138}, bytes.size() - 1}) {
    QFile cut(folder.filePath("cut.bmp"));
    ASSERT_TRUE(cut.open(QIODevice::WriteOnly));
    cut.write(bytes.left(size));
    cut.close();
    EXPECT_TRUE(ReadBitmap(cut.fileName()).isNull()) << size;
  }
}

}  // namespace
}  // namespace kestrin::ui::kit
