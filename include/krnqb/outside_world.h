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

/// Receives the component's events, on the thread that runs the import, which waits for each to return. A
/// handler may read and change the component's options. An Error thrown by a handler is an error of the
/// raising operation.
class EventSink {
 public:
  virtual ~EventSink() = default;

  /// Raised once per import, between its two passes. `oXML` holds Nothing; what the handler leaves in it is
  /// ignored.
  virtual void XMLprocessing(Variant& oXML) = 0;
  /// Never raised: ask GetTablesAffected instead.
  virtual void TableModified(std::string_view sTableID) = 0;
  virtual void AfterImport() = 0;
  /// `PercentValue` is 0 to 100.
  virtual void ProgressBarChange(std::int16_t PercentValue, std::string_view Description) = 0;
};

/// What the component shows to a person.
class UserInterface {
 public:
  virtual ~UserInterface() = default;

  /// A message with an OK button and no title; returns when it has been closed.
  virtual void ShowMessage(std::string_view text) = 0;

  /// One of the component's dialogs; gives the chosen path, or Empty.
  virtual Variant ShowDialog(QBDataExchange& component, QBKRN_Dialogs dialog) = 0;
};

enum class RegistryHive { LocalMachine, CurrentUser };

/// Read access to the system's registry.
class Registry {
 public:
  virtual ~Registry() = default;

  /// The value `name` (empty: the unnamed one) of a key, opened with a rights mask: a text, a 32-bit number,
  /// or nothing when the key or the value cannot be read. A text may still have the NUL that ends it where it
  /// is stored.
  virtual std::optional<std::variant<std::string, std::uint32_t>> Read(RegistryHive hive,
                                                                       std::string_view key,
                                                                       std::string_view name,
                                                                       std::uint32_t rights) = 0;
};

/// The files of the machine. Paths are UTF-8; where names are bytes, they are these bytes.
class FileSystem {
 public:
  virtual ~FileSystem() = default;

  /// The names of the files in a folder, in any order and without its sub-folders. Error 76 when the folder
  /// is missing or cannot be read.
  virtual std::vector<std::string> FileNames(const std::string& folder) = 0;

  virtual bool FileExists(const std::string& path) = 0;
};

/// A moment in local time.
struct LocalDateTime {
  std::int32_t year = 0;
  std::int32_t month = 0;   ///< 1 to 12
  std::int32_t day = 0;     ///< 1 to 31
  std::int32_t hour = 0;    ///< 0 to 23
  std::int32_t minute = 0;  ///< 0 to 59
  std::int32_t second = 0;  ///< 0 to 59
};

class Clock {
 public:
  virtual ~Clock() = default;
  virtual LocalDateTime Now() = 0;
};

/// Everything outside the component, but for the plan, which comes through `KRNPlanData`. The component
/// shares what it is given and releases it when it ends. Any of them may be null: no processors means that
/// QuickBooks cannot be reached (429), no user interface that nothing is shown, no clock and no files the
/// system's own.
struct OutsideWorld {
  std::shared_ptr<RequestProcessorFactory> processors;
  std::vector<std::shared_ptr<EventSink>> sinks;
  std::shared_ptr<Observer> observer;
  std::shared_ptr<UserInterface> userInterface;
  std::shared_ptr<Registry> registry;
  std::shared_ptr<Clock> clock;
  std::shared_ptr<FileSystem> files = {};
  /// The folder of the QuickBooks program, a path of this system; without one the registry is asked for it.
  std::optional<std::string> quickBooksFolder = {};
};

}  // namespace krnqb
