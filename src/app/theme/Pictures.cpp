#include "app/theme/Pictures.h"

#include <QPainter>
#include <utility>

#include "app/theme/BitmapReader.h"

namespace kestrin::app {

Pictures::Pictures(QString folder) : m_folder(std::move(folder)) {}

QPixmap Pictures::Load(const QString& file) const {
  if (const auto loaded = m_loaded.constFind(file); loaded != m_loaded.cend()) return *loaded;
  const QImage picture = ReadBitmap(m_folder + '/' + file);
  // A picture that is missing may come yet. Also, Qt says on the console what it thinks of a null image.
  if (picture.isNull()) return {};
  return *m_loaded.insert(file, QPixmap::fromImage(picture));
}

QIcon Pictures::Icon(const QString& file) const {
  const QPixmap picture = Load(file);
  return picture.isNull() ? QIcon() : QIcon(picture);
}

QIcon Pictures::Icon(const QString& file, const QString& disabledFile) const {
  QIcon icon = Icon(file);
  const QPixmap disabled = Load(disabledFile);
  if (!icon.isNull() && !disabled.isNull()) icon.addPixmap(disabled, QIcon::Disabled);
  return icon;
}

QIcon Pictures::Tinted(const QString& file, const QColor& color) const {
  QPixmap picture = Load(file);
  if (picture.isNull()) return {};
  QPainter painter(&picture);
  painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
  painter.fillRect(picture.rect(), color);
  painter.end();
  return QIcon(picture);
}

QPixmap Pictures::Pixmap(const QString& file, const QSize& size, qreal devicePixelRatio) const {
  const QPixmap picture = Load(file);
  if (picture.isNull()) return {};
  QPixmap fitted =
      picture.scaled((QSizeF(size) * devicePixelRatio).toSize(), Qt::KeepAspectRatio, Qt::SmoothTransformation);
  fitted.setDevicePixelRatio(devicePixelRatio);
  return fitted;
}

}  // namespace kestrin::app
