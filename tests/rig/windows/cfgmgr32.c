/* SPDX-License-Identifier: MIT */
/* Stands in for Windows' cfgmgr32.dll, of which Wine 8 lacks what hidapi asks: the one device is the pipe that the
   environment variable KESTRIN_STAND_IN_BOARD names. It has no device above it, and nobody is told of plugging. */
#include <string.h>
#include <wchar.h>
#include <windows.h>

#define EXPORTED __declspec(dllexport)

enum { kSuccess = 0, kNoSuchDevice = 0x0D, kBufferTooSmall = 0x1A, kNoSuchValue = 0x25, kLongest = 500 };

/* Writes the list - the names, each with its zero, and one more zero - where it fits; returns its length in letters. */
static ULONG List(wchar_t* list, ULONG size) {
  wchar_t name[kLongest] = {0};
  const DWORD length = GetEnvironmentVariableW(L"KESTRIN_STAND_IN_BOARD", name, kLongest);
  const ULONG needed = length ? length + 2 : 1;
  if (list != NULL && size >= needed) {
    memset(list, 0, size * sizeof(wchar_t));
    memcpy(list, name, length * sizeof(wchar_t));
  }
  return needed;
}

EXPORTED DWORD WINAPI CM_Get_Device_Interface_List_SizeW(ULONG* size, void* kind, wchar_t* device, ULONG flags) {
  (void)kind;
  (void)device;
  (void)flags;
  *size = List(NULL, 0);
  return kSuccess;
}

EXPORTED DWORD WINAPI CM_Get_Device_Interface_ListW(void* kind, wchar_t* device, wchar_t* list, ULONG size,
                                                    ULONG flags) {
  (void)kind;
  (void)device;
  (void)flags;
  return List(list, size) > size ? kBufferTooSmall : kSuccess;
}

EXPORTED DWORD WINAPI CM_Get_Device_Interface_PropertyW(const wchar_t* path, void* key, ULONG* type, void* buffer,
                                                        ULONG* size, ULONG flags) {
  (void)path;
  (void)key;
  (void)type;
  (void)buffer;
  (void)size;
  (void)flags;
  return kNoSuchValue;
}

EXPORTED DWORD WINAPI CM_Locate_DevNodeW(DWORD* node, wchar_t* device, ULONG flags) {
  (void)node;
  (void)device;
  (void)flags;
  return kNoSuchDevice;
}

EXPORTED DWORD WINAPI CM_Get_Parent(DWORD* parent, DWORD node, ULONG flags) {
  (void)parent;
  (void)node;
  (void)flags;
  return kNoSuchDevice;
}

EXPORTED DWORD WINAPI CM_Get_DevNode_PropertyW(DWORD node, void* key, ULONG* type, void* buffer, ULONG* size,
                                               ULONG flags) {
  (void)node;
  (void)key;
  (void)type;
  (void)buffer;
  (void)size;
  (void)flags;
  return kNoSuchValue;
}
