#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "host/object.h"
#include "krnqb/xml_element.h"

namespace krnqb::testing {

/// The tables of a plan file, shared by the various plan objects.
class PlanTables {
 public:
  /// Reads a plan file; fails the test if it cannot be read.
  explicit PlanTables(const std::string& path);

  /// Returns the table, or a null element if the plan has no such table.
  XmlElement Table(const std::string& id) const;
  /// Replaces the tables of a "<tables>" document; an unknown id is subscript out of range.
  HRESULT Take(const std::string& text);
  /// Returns the cells as `krnqb plan show --cells` prints them.
  std::string Cells() const;

 private:
  XmlElement document_;
};

/// How a plan exposes its members.
enum class MemberKind { Methods, Properties, Collection };

/// What a test can set and inspect in a plan.
struct PlanState {
  explicit PlanState(const std::string& path) : tables(path) {}

  PlanTables tables;
  /// Called first in each member, with its name; a failure it returns becomes the member's.
  std::function<HRESULT(const std::string& member, const HostCall& call)> before;
  std::vector<std::string> calls;
  std::chrono::duration<double> time{};  ///< spent in its members
  std::vector<VARTYPE> textTypes;        ///< of Deserialize's argument
  std::wstring openedPlan;
};

/// Creates a plan of the client's own, available only through IDispatch.
Held<IDispatch> NewHostPlan(const std::shared_ptr<PlanState>& state, MemberKind kind = MemberKind::Methods);

/// Creates a plan whose members are typed in a type library of their own, with texts by reference, like those
/// of a Visual Basic class.
Held<IDispatch> NewTypedPlan(const std::shared_ptr<PlanState>& state);

}  // namespace krnqb::testing
