#include "app/theme/Pictures.h"

#include <QImage>
#include <QPainter>
#include <utility>

namespace kestrin::app {

Pictures::Pictures(QString folder) : m_folder(std::move(folder)) {}

QPixmap Pictures::Load(const QString& file) const {
  const QImage picture(m_folder + '/' + file);
  // From a null image Qt makes a null pixmap, but says so on the console.
  return picture.isNull() ? QPixmap() : QPixmap::fromImage(picture);
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
