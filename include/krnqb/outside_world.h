#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "krnqb/enumerations.h"
#include "krnqb/observer.h"
#include "krnqb/plan_object.h"
#include "krnqb/request_processor.h"
#include "krnqb/variant.h"

namespace krnqb {

class QBDataExchange;

/// Receives the component's events on the thread that runs the import, which waits for each handler to
/// return. A handler may read and change the component's options. An Error that a handler throws is an error
/// of the operation that raised the event.
class EventSink {
 public:
  virtual ~EventSink() = default;

  /// Raised once per import, between its two passes. `oXML` is Nothing; whatever the handler assigns to it is
  /// ignored.
  virtual void XMLprocessing(Variant& oXML) = 0;
  /// Never raised; call GetTablesAffected instead.
  virtual void TableModified(std::string_view sTableID) = 0;
  /// Raised at the end of an import, after the last tables were loaded into the plan.
  virtual void AfterImport() = 0;
  /// Reports the progress of the current operation; `PercentValue` is 0 to 100.
  virtual void ProgressBarChange(std::int16_t PercentValue, std::string_view Description) = 0;
};

/// Shows messages and dialogs to the user.
class UserInterface {
 public:
  virtual ~UserInterface() = default;

  /// Shows a message with an OK button and no title; returns when it is closed.
  virtual void ShowMessage(std::string_view text) = 0;

  /// Shows one of the component's dialogs; returns the chosen path, or Empty.
  virtual Variant ShowDialog(QBDataExchange& component, QBKRN_Dialogs dialog) = 0;
};

/// The parts of the registry that the component reads.
enum class RegistryHive {
  LocalMachine,  ///< of all users
  CurrentUser    ///< of the current user
};

/// Read access to the system's registry.
class Registry {
 public:
  virtual ~Registry() = default;

  /// Opens `key` with the access mask `rights` and returns its value `name` (empty: the unnamed value), a
  /// text or a 32-bit number. Returns nothing if the key or the value cannot be read. A text may include its
  /// stored terminating NUL.
  virtual std::optional<std::variant<std::string, std::uint32_t>> Read(RegistryHive hive,
                                                                       std::string_view key,
                                                                       std::string_view name,
                                                                       std::uint32_t rights) = 0;
};

/// The file system. Paths are UTF-8, or the system's bytes where file names are bytes.
class FileSystem {
 public:
  virtual ~FileSystem() = default;

  /// Returns the names of the files in a folder, in any order and without its subfolders. Throws Error 76 if
  /// the folder is missing or cannot be read.
  virtual std::vector<std::string> FileNames(const std::string& folder) = 0;

  /// Returns whether the path names an existing file.
  virtual bool FileExists(const std::string& path) = 0;
};

/// A moment in local time.
struct LocalDateTime {
  std::int32_t year = 0;    ///< such as 2002
  std::int32_t month = 0;   ///< 1 to 12
  std::int32_t day = 0;     ///< 1 to 31
  std::int32_t hour = 0;    ///< 0 to 23
  std::int32_t minute = 0;  ///< 0 to 59
  std::int32_t second = 0;  ///< 0 to 59
};

/// The time that save stamps are made of.
class Clock {
 public:
  virtual ~Clock() = default;

  /// Returns the current local time.
  virtual LocalDateTime Now() = 0;
};

/// The services that the component uses, except the plan, which is set through `KRNPlanData`. The component
/// shares ownership and releases them when it is destroyed. Any may be null, except the sinks in the list:
/// without processors QuickBooks is unavailable (Error 429), without an observer notices are dropped, without
/// a user interface nothing is shown, a null registry behaves like an empty one, and a null clock or file
/// system means the operating system's own.
struct OutsideWorld {
  std::shared_ptr<RequestProcessorFactory> processors;  ///< QuickBooks
  std::vector<std::shared_ptr<EventSink>> sinks;        ///< who receives the events, in this order
  std::shared_ptr<Observer> observer;                   ///< who receives the notices
  std::shared_ptr<UserInterface> userInterface;         ///< shows messages and dialogs
  std::shared_ptr<Registry> registry;                   ///< where the folder of QuickBooks is looked up
  std::shared_ptr<Clock> clock;                         ///< the time of save stamps
  std::shared_ptr<FileSystem> files = {};               ///< where company files are looked for
  /// The folder of the QuickBooks program, as a path of this system. If empty, the folder is looked up in the
  /// registry.
  std::optional<std::string> quickBooksFolder = {};
};

}  // namespace krnqb
