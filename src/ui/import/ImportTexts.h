// SPDX-License-Identifier: MIT
#pragma once

#include <QCoreApplication>

namespace kestrin::ui::imports {

/// The texts that parts of the import sheet share.
struct ImportTexts {
  Q_DECLARE_TR_FUNCTIONS(ImportTexts)
};

}  // namespace kestrin::ui::imports
