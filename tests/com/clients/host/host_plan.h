#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "host/host_object.h"
#include "krnqb/xml_element.h"

namespace krnqb::testing {

/// The tables of a plan file, whatever object they are reached through.
class PlanTables {
 public:
  /// Reads a plan file; the test fails when it cannot.
  explicit PlanTables(const std::string& path);

  /// None when the plan has no such table.
  XmlElement Table(const std::string& id) const;
  /// Replaces the tables of a "<tables>" document; an unknown id is subscript out of range.
  HRESULT Take(const std::string& text);
  /// The cells as `krnqb plan show --cells` lists them.
  std::string Cells() const;

 private:
  XmlElement document_;
};

/// How a plan has its members.
enum class MemberKind { Methods, Properties, Collection };

/// What a plan can be told and asked in a test.
struct PlanState {
  explicit PlanState(const std::string& path) : tables(path) {}

  PlanTables tables;
  /// Called first in each member, by its name; when it gives a failure, the member ends with it.
  std::function<HRESULT(const std::string& member, const HostCall& call)> before;
  std::vector<std::string> calls;
  std::vector<VARTYPE> textTypes;  ///< of Deserialize's argument
  std::wstring openedPlan;
};

/// A plan of the client's own, reached by IDispatch alone.
Held<IDispatch> NewHostPlan(const std::shared_ptr<PlanState>& state, MemberKind kind = MemberKind::Methods);

/// A plan whose members are typed in a type library of their own, texts by reference, as those of a Visual
/// Basic class are.
Held<IDispatch> NewTypedPlan(const std::shared_ptr<PlanState>& state);

}  // namespace krnqb::testing
