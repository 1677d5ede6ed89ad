// The headless backend: windows live only in their ports, nothing is shown
// and no person types. The modal loop answers its dialogs itself when no
// automation agent queues input.
#include "platform/backends/backend.h"

namespace platform {
namespace {

class Headless final : public Backend {
  public:
    const char *Name() const override { return "headless"; }
    bool WaitForInput(int32_t) override { return false; }
};

} // namespace

Backend *NewHeadlessBackend() {
    static Headless headless;
    return &headless;
}

} // namespace platform
