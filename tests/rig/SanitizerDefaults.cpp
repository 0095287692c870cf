// SPDX-License-Identifier: MIT
// The wrapper preloads a library in front of AddressSanitizer's own, which that takes for a mistake unless told
// otherwise. This must not be done for the whole test run, so the program says it for itself.
extern "C" const char* __asan_default_options() { return "verify_asan_link_order=0"; }
