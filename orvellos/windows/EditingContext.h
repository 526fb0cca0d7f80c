#pragma once

#include <set>
#include <string>

#include "orvellos/base/Published.h"

namespace orvellos {

// Which surfaces of the user interface are editing tags just now. While any is, every tag is shown.
class EditingContext {
  public:
    void begin(const std::string& source) {
        sources_.insert(source);
        publish();
    }
    void end(const std::string& source) {
        sources_.erase(source);
        publish();
    }

    // True exactly while `sources` is not empty; announced when it changes.
    [[nodiscard]] Published<bool>& isActive() { return isActive_; }
    [[nodiscard]] const std::set<std::string>& sources() const { return sources_; }

  private:
    void publish() {
        if (isActive_.get() == sources_.empty()) isActive_.set(!sources_.empty());
    }

    std::set<std::string> sources_;
    Published<bool> isActive_{false};
};

}  // namespace orvellos
