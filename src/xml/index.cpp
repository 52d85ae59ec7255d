#include "xml/index.h"

namespace krnqb {

XmlTextIndex::XmlTextIndex(const XmlElement& element, std::string_view name) {
  for (XmlElement candidate = element.Root(); candidate; candidate = candidate.NextInDocument()) {
    if (candidate.IsNamed(name)) elements_.try_emplace(candidate.Text(), candidate);
  }
}

XmlElement XmlTextIndex::Find(const std::string& text) const {
  const auto found = elements_.find(text);
  return found == elements_.end() ? XmlElement() : found->second;
}

}  // namespace krnqb
