/* SPDX-License-Identifier: MIT */
/* Stands in for Windows' hid.dll, whose device under Wine is none: the calls that hidapi looks up, for a board that is
   a named pipe. The prepared data describe what the board's descriptor says - 1,028 bytes out, two bytes in, no report
   ids - so that hidapi can rebuild it. How they lie in memory is nowhere documented; hidapi knows it too. */
#include <string.h>
#include <wchar.h>
#include <windows.h>

#define EXPORTED __declspec(dllexport)

enum { kVendorId = 0x04D8, kProductId = 0xFA37, kVendorPage = 0xFF00, kReportBytes = 1028, kAnswerBytes = 2 };
/* Of the flags of a field: its values are absolute. */
enum { kAbsolute = 0x08 };
enum { kSuccess = 0x00110000 };

typedef struct {
  ULONG size;
  USHORT vendorId, productId, version;
} Attributes;

typedef struct {
  USHORT usage, usagePage, inputBytes, outputBytes, featureBytes, reserved[17], counts[10];
} Capabilities;

typedef struct {
  USHORT first, count, end, reportBytes;
} ReportInfo;

typedef struct {
  USHORT usagePage;
  UCHAR reportId, bitPosition;
  USHORT bits, count, bytePosition, bitCount;
  ULONG bitField;
  USHORT nextBytePosition, collection, collectionUsagePage, collectionUsage;
  UCHAR flags, reserved1[3];
  struct {
    UCHAR token, reserved[3];
    ULONG bits;
  } unknown[4];
  USHORT usage, usageAgain, string, stringAgain, designator, designatorAgain, index, indexAgain;
  UCHAR hasNull, reserved2[3];
  LONG logicalMinimum, logicalMaximum, physicalMinimum, physicalMaximum;
  ULONG units, unitsExponent;
} Field;

typedef struct {
  USHORT usage, usagePage, parent, children, next, first;
  ULONG type;
} Collection;

typedef struct {
  char magic[8];
  USHORT usage, usagePage, reserved[2];
  ReportInfo reports[3];
  USHORT collectionsAt, collectionCount;
  Field fields[2];
  Collection collections[1];
} PreparedData;

#define BYTES_OF(ITS_USAGE, COUNT)                                                                                \
  {                                                                                                               \
    .usagePage = kVendorPage, .bits = 8, .count = COUNT, .bytePosition = 1, .bitCount = 8 * COUNT, .bitField = 2, \
    .nextBytePosition = 1 + COUNT, .collectionUsagePage = kVendorPage, .collectionUsage = 1, .flags = kAbsolute,  \
    .usage = ITS_USAGE, .usageAgain = ITS_USAGE, .logicalMaximum = 255                                            \
  }

/* Input, output and feature reports, each with a byte for the id before it. */
static const PreparedData s_prepared = {
    "HidP KDR",
    1,
    kVendorPage,
    {0, 0},
    {{0, 1, 1, 1 + kAnswerBytes}, {1, 1, 2, 1 + kReportBytes}, {2, 0, 2, 0}},
    2 * sizeof(Field),
    1,
    {BYTES_OF(2, kAnswerBytes), BYTES_OF(1, kReportBytes)},
    {{1, kVendorPage, 0, 0, 0, 0, 1}},
};

static BOOLEAN Put(const wchar_t* text, void* buffer, ULONG size) {
  const ULONG needed = (ULONG)((wcslen(text) + 1) * sizeof(wchar_t));
  if (needed > size) return FALSE;
  memcpy(buffer, text, needed);
  return TRUE;
}

static BOOLEAN Refuse(void) {
  SetLastError(ERROR_NOT_SUPPORTED);
  return FALSE;
}

EXPORTED void WINAPI HidD_GetHidGuid(GUID* guid) {
  static const GUID kHid = {0x4d1e55b2, 0xf16f, 0x11cf, {0x88, 0xcb, 0x00, 0x11, 0x11, 0x00, 0x00, 0x30}};
  *guid = kHid;
}

EXPORTED BOOLEAN WINAPI HidD_GetAttributes(HANDLE device, Attributes* attributes) {
  (void)device;
  attributes->vendorId = kVendorId;
  attributes->productId = kProductId;
  attributes->version = 0x0100;
  return TRUE;
}

EXPORTED BOOLEAN WINAPI HidD_GetSerialNumberString(HANDLE device, void* buffer, ULONG size) {
  (void)device;
  return Put(L"SN0001", buffer, size);
}

EXPORTED BOOLEAN WINAPI HidD_GetManufacturerString(HANDLE device, void* buffer, ULONG size) {
  (void)device;
  return Put(L"Kestrin", buffer, size);
}

/* With a letter that is in no code page of Western Europe's consoles. */
EXPORTED BOOLEAN WINAPI HidD_GetProductString(HANDLE device, void* buffer, ULONG size) {
  (void)device;
  return Put(L"Kestrin Bl\u00e5tt \u0416", buffer, size);
}

EXPORTED BOOLEAN WINAPI HidD_GetIndexedString(HANDLE device, ULONG index, void* buffer, ULONG size) {
  (void)device;
  (void)index;
  return Put(L"", buffer, size);
}

EXPORTED BOOLEAN WINAPI HidD_SetFeature(HANDLE device, void* buffer, ULONG size) {
  (void)device;
  (void)buffer;
  (void)size;
  return Refuse();
}

EXPORTED BOOLEAN WINAPI HidD_GetFeature(HANDLE device, void* buffer, ULONG size) {
  return HidD_SetFeature(device, buffer, size);
}

EXPORTED BOOLEAN WINAPI HidD_GetInputReport(HANDLE device, void* buffer, ULONG size) {
  return HidD_SetFeature(device, buffer, size);
}

EXPORTED BOOLEAN WINAPI HidD_SetOutputReport(HANDLE device, void* buffer, ULONG size) {
  return HidD_SetFeature(device, buffer, size);
}

EXPORTED BOOLEAN WINAPI HidD_GetPreparsedData(HANDLE device, const void** data) {
  (void)device;
  *data = &s_prepared;
  return TRUE;
}

EXPORTED BOOLEAN WINAPI HidD_FreePreparsedData(void* data) {
  (void)data;
  return TRUE;
}

EXPORTED LONG WINAPI HidP_GetCaps(void* data, Capabilities* capabilities) {
  (void)data;
  memset(capabilities, 0, sizeof *capabilities);
  capabilities->usagePage = kVendorPage;
  capabilities->usage = 1;
  capabilities->inputBytes = 1 + kAnswerBytes;
  capabilities->outputBytes = 1 + kReportBytes;
  return kSuccess;
}

EXPORTED BOOLEAN WINAPI HidD_SetNumInputBuffers(HANDLE device, ULONG count) {
  (void)device;
  (void)count;
  return TRUE;
}
