// SPDX-License-Identifier: MIT
#include "ui/kit/Pictures.h"

#include <array>
#include <span>
#include <utility>

#include "ui/kit/BitmapReader.h"

namespace kestrin::ui::kit {

Pictures::Pictures(QString folder) : m_folder(std::move(folder)) {}

QPixmap Pictures::Load(const QString& file) const {
  if (const auto loaded = m_loaded.constFind(file); loaded != m_loaded.cend()) return *loaded;
  QImage picture = ReadBitmap(m_folder + '/' + file);
  // A picture that is missing may come yet. Also, Qt says on the console what it thinks of a null image.
  if (picture.isNull()) return {};
  return *m_loaded.insert(file, QPixmap::fromImage(std::move(picture)));
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
  const QPixmap picture = Load(file);
  if (picture.isNull()) return {};
  // By hand, as a painter starts several threads for it, which take longer than the work.
  QImage tinted = picture.toImage().convertToFormat(QImage::Format_ARGB32_Premultiplied);
  std::array<QRgb, 256> shades{};
  for (std::size_t alpha = 0; alpha < shades.size(); ++alpha)
    shades[alpha] =
        qPremultiply(qRgba(color.red(), color.green(), color.blue(), static_cast<int>(alpha) * color.alpha() / 255));
  for (int y = 0; y < tinted.height(); ++y)
    for (QRgb& pixel : std::span(reinterpret_cast<QRgb*>(tinted.scanLine(y)), static_cast<std::size_t>(tinted.width())))
      pixel = shades[static_cast<std::size_t>(qAlpha(pixel))];
  return QIcon(QPixmap::fromImage(std::move(tinted)));
}

QPixmap Pictures::Pixmap(const QString& file, const QSize& size, qreal devicePixelRatio) const {
  const QPixmap picture = Load(file);
  if (picture.isNull()) return {};
  QPixmap fitted =
      picture.scaled((QSizeF(size) * devicePixelRatio).toSize(), Qt::KeepAspectRatio, Qt::SmoothTransformation);
  fitted.setDevicePixelRatio(devicePixelRatio);
  return fitted;
}

}  // namespace kestrin::ui::kit
