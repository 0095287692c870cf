// SPDX-License-Identifier: MIT
#include "platform/archive/ZipCalls.h"

#include <dlfcn.h>
#include <zip.h>

#include <array>

// The library's functions under their own names, looked up when the first is called. The systems that one package
// serves have the library in two versions of different file names, which are the same in all that is used here; a
// program that is linked with one of them does not start beside the other.

namespace {

void* LoadZipLibrary() {
  constexpr std::array kNames{"libzip.so.5", "libzip.so.4"};
  for (const char* const name : kNames)
    if (void* const library = ::dlopen(name, RTLD_NOW | RTLD_LOCAL)) return library;
  return nullptr;
}

void* ZipLibraryHandle() {
  static void* const library = LoadZipLibrary();
  return library;
}

template <class Function>
Function* FindZipCall(const char* name) {
  return reinterpret_cast<Function*>(::dlsym(ZipLibraryHandle(), name));
}

}  // namespace

namespace kestrin::platform::archive {

bool IsZipLibraryThere() { return ZipLibraryHandle() != nullptr; }

}  // namespace kestrin::platform::archive

// NOLINTBEGIN(readability-identifier-naming): the names are the library's.
extern "C" {

int zip_close(zip_t* archive) {
  static const auto call = FindZipCall<decltype(zip_close)>("zip_close");
  return call(archive);
}

void zip_discard(zip_t* archive) {
  static const auto call = FindZipCall<decltype(zip_discard)>("zip_discard");
  call(archive);
}

int zip_error_code_zip(const zip_error_t* error) {
  static const auto call = FindZipCall<decltype(zip_error_code_zip)>("zip_error_code_zip");
  return call(error);
}

void zip_error_fini(zip_error_t* error) {
  static const auto call = FindZipCall<decltype(zip_error_fini)>("zip_error_fini");
  call(error);
}

void zip_error_init(zip_error_t* error) {
  static const auto call = FindZipCall<decltype(zip_error_init)>("zip_error_init");
  call(error);
}

void zip_error_set(zip_error_t* error, int code, int reason) {
  static const auto call = FindZipCall<decltype(zip_error_set)>("zip_error_set");
  call(error, code, reason);
}

zip_int64_t zip_error_to_data(const zip_error_t* error, void* data, zip_uint64_t length) {
  static const auto call = FindZipCall<decltype(zip_error_to_data)>("zip_error_to_data");
  return call(error, data, length);
}

int zip_fclose(zip_file_t* file) {
  static const auto call = FindZipCall<decltype(zip_fclose)>("zip_fclose");
  return call(file);
}

zip_int64_t zip_file_add(zip_t* archive, const char* name, zip_source_t* source, zip_flags_t flags) {
  static const auto call = FindZipCall<decltype(zip_file_add)>("zip_file_add");
  return call(archive, name, source, flags);
}

int zip_file_get_external_attributes(zip_t* archive, zip_uint64_t index, zip_flags_t flags, zip_uint8_t* system,
                                     zip_uint32_t* attributes) {
  static const auto call = FindZipCall<decltype(zip_file_get_external_attributes)>("zip_file_get_external_attributes");
  return call(archive, index, flags, system, attributes);
}

int zip_file_set_dostime(zip_t* archive, zip_uint64_t index, zip_uint16_t time, zip_uint16_t date, zip_flags_t flags) {
  static const auto call = FindZipCall<decltype(zip_file_set_dostime)>("zip_file_set_dostime");
  return call(archive, index, time, date, flags);
}

zip_file_t* zip_fopen_index(zip_t* archive, zip_uint64_t index, zip_flags_t flags) {
  static const auto call = FindZipCall<decltype(zip_fopen_index)>("zip_fopen_index");
  return call(archive, index, flags);
}

zip_int64_t zip_fread(zip_file_t* file, void* data, zip_uint64_t length) {
  static const auto call = FindZipCall<decltype(zip_fread)>("zip_fread");
  return call(file, data, length);
}

zip_int64_t zip_get_num_entries(zip_t* archive, zip_flags_t flags) {
  static const auto call = FindZipCall<decltype(zip_get_num_entries)>("zip_get_num_entries");
  return call(archive, flags);
}

const char* zip_libzip_version() {
  static const auto call = FindZipCall<decltype(zip_libzip_version)>("zip_libzip_version");
  return call();
}

zip_t* zip_open_from_source(zip_source_t* source, int flags, zip_error_t* error) {
  static const auto call = FindZipCall<decltype(zip_open_from_source)>("zip_open_from_source");
  return call(source, flags, error);
}

zip_source_t* zip_source_buffer(zip_t* archive, const void* data, zip_uint64_t length, int takes) {
  static const auto call = FindZipCall<decltype(zip_source_buffer)>("zip_source_buffer");
  return call(archive, data, length, takes);
}

void zip_source_free(zip_source_t* source) {
  static const auto call = FindZipCall<decltype(zip_source_free)>("zip_source_free");
  call(source);
}

zip_source_t* zip_source_function_create(zip_source_callback answer, void* self, zip_error_t* error) {
  static const auto call = FindZipCall<decltype(zip_source_function_create)>("zip_source_function_create");
  return call(answer, self, error);
}

zip_int64_t zip_source_seek_compute_offset(zip_uint64_t place, zip_uint64_t size, void* data, zip_uint64_t length,
                                           zip_error_t* error) {
  static const auto call = FindZipCall<decltype(zip_source_seek_compute_offset)>("zip_source_seek_compute_offset");
  return call(place, size, data, length, error);
}

int zip_stat_index(zip_t* archive, zip_uint64_t index, zip_flags_t flags, zip_stat_t* about) {
  static const auto call = FindZipCall<decltype(zip_stat_index)>("zip_stat_index");
  return call(archive, index, flags, about);
}

void zip_stat_init(zip_stat_t* about) {
  static const auto call = FindZipCall<decltype(zip_stat_init)>("zip_stat_init");
  call(about);
}

}  // extern "C"
// NOLINTEND(readability-identifier-naming)
