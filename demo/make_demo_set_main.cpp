// SPDX-License-Identifier: MIT
// make_demo_set FOLDER: synthesises the demo set into that folder, and the fonts of the demo's update server into its
// folder "fonts".

#include <exception>
#include <iostream>

#include "demo/DemoSet.h"
#include "platform/files/SystemDisk.h"

int main(int argc, char** argv) {
  if (argc != 2) {
    std::cerr << "usage: make_demo_set FOLDER\n";
    return 2;
  }
  try {
    const std::filesystem::path folder = argv[1];
    kestrin::platform::files::SystemDisk disk;
    kestrin::core::base::Result<> written = kestrin::demo::WriteDemoSet(folder, disk);
    if (written) written = kestrin::demo::WriteDemoFonts(folder / "fonts", disk);
    if (written) return 0;
    std::cerr << "make_demo_set: " << written.Text() << "\n";
  } catch (const std::exception& error) {
    std::cerr << "make_demo_set: " << error.what() << "\n";
  }
  return 1;
}
