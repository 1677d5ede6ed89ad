// ScriptedAgent: drives dialogs through the automation interface. Each
// time a dialog waits, the next step runs with its window; once the steps
// are used up the agent queues nothing (and a headless dialog answers for
// itself). Attached for the life of the object.
#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include <vitrail/automation.h>

namespace vitrail_test {

class ScriptedAgent {
  public:
    using Step = std::function<void(WindowRef)>;
    explicit ScriptedAgent(std::vector<Step> steps) : steps_(std::move(steps)) {
        vitrail_set_agent(&ScriptedAgent::Call, this);
    }
    ~ScriptedAgent() { vitrail_set_agent(nullptr, nullptr); }
    ScriptedAgent(const ScriptedAgent &) = delete;
    ScriptedAgent &operator=(const ScriptedAgent &) = delete;

    // Steps run so far.
    size_t done() const { return next_; }

  private:
    static void Call(WindowRef window, void *self) {
        auto *agent = static_cast<ScriptedAgent *>(self);
        if (agent->next_ < agent->steps_.size()) agent->steps_[agent->next_++](window);
    }
    std::vector<Step> steps_;
    size_t next_ = 0;
};

// The title of a window, as the automation interface reads it.
inline std::string Title(WindowRef w) {
    char buf[256] = "";
    vitrail_window_title(w, buf, sizeof buf);
    return buf;
}

// Item `item` of a dialog window; kind -1 when there is no such item.
inline vitrail_item_info Item(WindowRef w, int32_t item) {
    vitrail_item_info info{};
    if (vitrail_dialog_item(w, item, &info) != 0) info.kind = -1;
    return info;
}

} // namespace vitrail_test
