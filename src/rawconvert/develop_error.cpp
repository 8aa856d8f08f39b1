#include "rawconvert/develop_error.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <string_view>

#include "rawconvert/messages.h"

namespace ml::rawconvert {
namespace {

constexpr std::uint32_t kLow = 0xFFFF;

struct CodeName {
  std::uint32_t code;
  std::string_view name;
};

/// In the order of the codes.
constexpr auto kCodeNames = std::to_array<CodeName>({
    {0x01, "cdUNIMPLEMENTED"},
    {0x02, "cdINTERNAL_ERROR"},
    {0x03, "cdMEM_ALLOC_FAILED"},
    {0x04, "cdMEM_FREE_FAILED"},
    {0x05, "cdOPERATION_CANCELLED"},
    {0x06, "cdINCOMPATIBLE_VERSION"},
    {0x07, "cdNOT_SUPPORTED"},
    {0x08, "cdUNEXPECTED_EXCEPTION"},
    {0x09, "cdPROTECTION_VIOLATION"},
    {0x0A, "cdMISSING_SUBCOMPONENT"},
    {0x0B, "cdSELECTION_UNAVAILABLE"},
    {0x20, "cdFILE_IO_ERROR"},
    {0x21, "cdFILE_TOO_MANY_OPEN"},
    {0x22, "cdFILE_NOT_FOUND"},
    {0x23, "cdFILE_OPEN_ERROR"},
    {0x24, "cdFILE_CLOSE_ERROR"},
    {0x25, "cdFILE_SEEK_ERROR"},
    {0x26, "cdFILE_TELL_ERROR"},
    {0x27, "cdFILE_READ_ERROR"},
    {0x28, "cdFILE_WRITE_ERROR"},
    {0x29, "cdFILE_PERMISSION_ERROR"},
    {0x2A, "cdFILE_DISK_FULL_ERROR"},
    {0x2B, "cdFILE_ALREADY_EXISTS"},
    {0x2C, "cdFILE_FORMAT_UNRECOGNIZED"},
    {0x2D, "cdFILE_DATA_CORRUPT"},
    {0x2E, "cdFILE_NAMING_NA"},
    {0x40, "cdDIR_NOT_FOUND"},
    {0x41, "cdDIR_IO_ERROR"},
    {0x42, "cdDIR_ENTRY_NOT_FOUND"},
    {0x43, "cdDIR_ENTRY_EXISTS"},
    {0x44, "cdDIR_NOT_EMPTY"},
    {0x50, "cdPROPERTIES_UNAVAILABLE"},
    {0x51, "cdPROPERTIES_MISMATCH"},
    {0x53, "cdPROPERTIES_NOT_LOADED"},
    {0x60, "cdINVALID_PARAMETER"},
    {0x61, "cdINVALID_HANDLE"},
    {0x62, "cdINVALID_POINTER"},
    {0x63, "cdINVALID_INDEX"},
    {0x64, "cdINVALID_LENGTH"},
    {0x65, "cdINVALID_FN_POINTER"},
    {0x66, "cdINVALID_SORT_FN"},
    {0x80, "cdDEVICE_NOT_FOUND"},
    {0x81, "cdDEVICE_BUSY"},
    {0x82, "cdDEVICE_INVALID"},
    {0x83, "cdDEVICE_EMERGENCY"},
    {0x84, "cdDEVICE_MEMORY_FULL"},
    {0x85, "cdDEVICE_INTERNAL_ERROR"},
    {0x86, "cdDEVICE_INVALID_PARAMETER"},
    {0x87, "cdDEVICE_NO_DISK"},
    {0x88, "cdDEVICE_DISK_ERROR"},
    {0x89, "cdDEVICE_CF_GATE_CHANGED"},
    {0x8A, "cdDEVICE_DIAL_CHANGED"},
    {0x8B, "cdDEVICE_NOT_INSTALLED"},
    {0x8C, "cdDEVICE_STAY_AWAKE"},
    {0x8D, "cdDEVICE_NOT_RELEASED"},
    {0xA0, "cdSTREAM_IO_ERROR"},
    {0xA1, "cdSTREAM_NOT_OPEN"},
    {0xA2, "cdSTREAM_ALREADY_OPEN"},
    {0xA3, "cdSTREAM_OPEN_ERROR"},
    {0xA4, "cdSTREAM_CLOSE_ERROR"},
    {0xA5, "cdSTREAM_SEEK_ERROR"},
    {0xA6, "cdSTREAM_TELL_ERROR"},
    {0xA7, "cdSTREAM_READ_ERROR"},
    {0xA8, "cdSTREAM_WRITE_ERROR"},
    {0xA9, "cdSTREAM_PERMISSION_ERROR"},
    {0xAA, "cdSTREAM_COULDNT_BEGIN_THREAD"},
    {0xAB, "cdSTREAM_BAD_OPTIONS"},
    {0xAC, "cdSTREAM_END_OF_STREAM"},
    {0xC0, "cdCOMM_PORT_IS_IN_USE"},
    {0xC1, "cdCOMM_DISCONNECTED"},
    {0xC2, "cdCOMM_DEVICE_INCOMPATIBLE"},
    {0xC3, "cdCOMM_BUFFER_FULL"},
    {0xC4, "cdCOMM_USB_BUS_ERR"},
    {0xD0, "cdUSB_DEVICE_LOCK_ERROR"},
    {0xD1, "cdUSB_DEVICE_UNLOCK_ERROR"},
    {0xE0, "cdSTI_UNKNOWN_ERROR"},
    {0xE1, "cdSTI_INTERNAL_ERROR"},
    {0xE2, "cdSTI_DEVICE_CREATE_ERROR"},
    {0xE3, "cdSTI_DEVICE_RELEASE_ERROR"},
    {0xE4, "cdDEVICE_NOT_LAUNCHED"},
    {0xF0, "cdENUM_NA"},
    {0xF1, "cdINVALID_FN_CALL"},
    {0xF2, "cdHANDLE_NOT_FOUND"},
    {0xF3, "cdINVALID_ID"},
});

}  // namespace

DevelopError::DevelopError(std::uint32_t code)
    : std::runtime_error("development error " + CodeText(code)), code_(code) {}

std::string CodeText(std::uint32_t code) {
  char text[16];
  std::snprintf(text, sizeof text, "0x%x", code);
  return text;
}

std::string RawFileComplaint(std::uint32_t code, const std::string& model) {
  switch (code & kLow) {
    case develop_code::kInvalid:
    case develop_code::kCorrupt:
      return messages::kRawInvalid;
    case develop_code::kUnsupported:
      return messages::FormatNotSupported(model);
    default:
      return {};
  }
}

CameraImageError::CameraImageError(std::uint32_t code) : std::runtime_error(CameraImageErrorText(code)), code_(code) {}

std::string CameraImageErrorText(std::uint32_t code) {
  const auto row = std::ranges::lower_bound(kCodeNames, code, {}, &CodeName::code);
  if (row == kCodeNames.end() || row->code != code) return messages::kUndefinedCode;
  return std::string(row->name);
}

}  // namespace ml::rawconvert
