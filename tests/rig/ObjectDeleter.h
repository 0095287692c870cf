// SPDX-License-Identifier: MIT
#pragma once

#include <glib-object.h>

namespace kestrin::rig {

/// Takes care of a reference to a GObject.
struct ObjectDeleter {
  void operator()(gpointer object) const { g_object_unref(object); }
};

}  // namespace kestrin::rig
