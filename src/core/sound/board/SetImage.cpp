// SPDX-License-Identifier: MIT
#include "sound/board/SetImage.h"

namespace kestrin::core::sound {

SetImage SetImage::Of(LSU_Configuration& configuration, const std::filesystem::path& path) {
  SetImage image{path, configuration.GetFileTable(), {}};
  for (const SlotFile& entry : configuration.FilesInFlashOrder())
    image.sounds.push_back(
        {{entry.kind, entry.position}, entry.file->StartAddress(), entry.file->NrOfBytes(), entry.file->GetFileCRC()});
  return image;
}

}  // namespace kestrin::core::sound
