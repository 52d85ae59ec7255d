#include "com/values/run_time_errors.h"

#include <algorithm>
#include <array>

#include "krnqb/error.h"

namespace krnqb::com {
namespace {

struct Meaning {
  HRESULT result;
  std::int32_t number;
};

// HRESULT_FROM_WIN32(RPC_S_SERVER_UNAVAILABLE)
constexpr auto serverUnavailable = static_cast<HRESULT>(0x800706BAU);

// A server that is installed but does not start keeps its own result: only a missing one is Error 429.
constexpr std::array meanings{Meaning{E_NOTIMPL, 445},
                              Meaning{E_NOINTERFACE, 430},
                              Meaning{E_ACCESSDENIED, 70},
                              Meaning{E_OUTOFMEMORY, error_number::outOfMemory},
                              Meaning{E_INVALIDARG, error_number::invalidProcedureCall},
                              Meaning{DISP_E_UNKNOWNINTERFACE, error_number::memberNotSupported},
                              Meaning{DISP_E_MEMBERNOTFOUND, error_number::memberNotSupported},
                              Meaning{DISP_E_PARAMNOTFOUND, 448},
                              Meaning{DISP_E_TYPEMISMATCH, error_number::typeMismatch},
                              Meaning{DISP_E_UNKNOWNNAME, error_number::memberNotSupported},
                              Meaning{DISP_E_NONAMEDARGS, 446},
                              Meaning{DISP_E_BADVARTYPE, 458},
                              Meaning{DISP_E_OVERFLOW, error_number::overflow},
                              Meaning{DISP_E_BADINDEX, error_number::subscriptOutOfRange},
                              Meaning{DISP_E_UNKNOWNLCID, 447},
                              Meaning{DISP_E_ARRAYISLOCKED, 10},
                              Meaning{DISP_E_BADPARAMCOUNT, 450},
                              Meaning{DISP_E_PARAMNOTOPTIONAL, 449},
                              Meaning{DISP_E_NOTACOLLECTION, 451},
                              Meaning{DISP_E_DIVBYZERO, 11},
                              Meaning{TYPE_E_DLLFUNCTIONNOTFOUND, 453},
                              Meaning{TYPE_E_TYPEMISMATCH, error_number::typeMismatch},
                              Meaning{TYPE_E_OUTOFBOUNDS, error_number::subscriptOutOfRange},
                              Meaning{TYPE_E_IOERROR, 57},
                              Meaning{TYPE_E_CANTCREATETMPFILE, 322},
                              Meaning{TYPE_E_CANTLOADLIBRARY, 48},
                              Meaning{STG_E_FILENOTFOUND, 432},
                              Meaning{STG_E_PATHNOTFOUND, error_number::pathNotFound},
                              Meaning{STG_E_TOOMANYOPENFILES, 67},
                              Meaning{STG_E_ACCESSDENIED, 70},
                              Meaning{STG_E_INSUFFICIENTMEMORY, error_number::outOfMemory},
                              Meaning{STG_E_NOMOREFILES, 67},
                              Meaning{STG_E_DISKISWRITEPROTECTED, 70},
                              Meaning{STG_E_WRITEFAULT, 57},
                              Meaning{STG_E_READFAULT, 57},
                              Meaning{STG_E_SHAREVIOLATION, 75},
                              Meaning{STG_E_LOCKVIOLATION, 70},
                              Meaning{STG_E_FILEALREADYEXISTS, 58},
                              Meaning{STG_E_MEDIUMFULL, 61},
                              Meaning{STG_E_INVALIDNAME, 53},
                              Meaning{STG_E_INUSE, 70},
                              Meaning{STG_E_NOTCURRENT, 70},
                              Meaning{STG_E_CANTSAVE, 57},
                              Meaning{REGDB_E_CLASSNOTREG, error_number::cannotCreateObject},
                              Meaning{CO_E_CLASSSTRING, error_number::cannotCreateObject},
                              Meaning{CO_E_APPNOTFOUND, error_number::cannotCreateObject},
                              Meaning{MK_E_UNAVAILABLE, error_number::cannotCreateObject},
                              Meaning{MK_E_INVALIDEXTENSION, 432},
                              Meaning{MK_E_CANTOPENFILE, 432},
                              Meaning{serverUnavailable, 462}};

struct Text {
  std::int32_t number;
  std::string_view text;
};

// The run-time errors that only outside objects raise; StandardDescription has the others.
constexpr std::array texts{
    Text{10, "This array is fixed or temporarily locked"},
    Text{11, "Division by zero"},
    Text{48, "Error in loading DLL"},
    Text{53, "File not found"},
    Text{57, "Device I/O error"},
    Text{58, "File already exists"},
    Text{61, "Disk full"},
    Text{67, "Too many files"},
    Text{70, "Permission denied"},
    Text{75, "Path/File access error"},
    Text{322, "Can't create necessary temporary file"},
    Text{430, "Class does not support Automation or does not support expected interface"},
    Text{432, "File name or class name not found during Automation operation"},
    Text{445, "Object doesn't support this action"},
    Text{446, "Object doesn't support named arguments"},
    Text{447, "Object doesn't support current locale setting"},
    Text{448, "Named argument not found"},
    Text{449, "Argument not optional"},
    Text{450, "Wrong number of arguments or invalid property assignment"},
    Text{451, "Object not a collection"},
    Text{453, "Specified DLL function not found"},
    Text{458, "Variable uses an Automation type not supported"},
    Text{462, "The remote server machine does not exist or is unavailable"}};

}  // namespace

std::optional<std::int32_t> RunTimeErrorOf(HRESULT result) noexcept {
  const auto* meaning = std::ranges::find(meanings, result, &Meaning::result);
  if (meaning == meanings.end()) return std::nullopt;
  return meaning->number;
}

std::string_view RunTimeErrorText(std::int32_t number) noexcept {
  const auto* known = std::ranges::find(texts, number, &Text::number);
  if (known != texts.end()) return known->text;
  const std::string_view standard = StandardDescription(number);
  return number > 0 && standard != StandardDescription(0) ? standard : std::string_view();
}

}  // namespace krnqb::com
