#include "Support/services/StopIndexingEvent.h"

#include <string>

#include "Support/platform/NamedEvent.h"

namespace vemra {

struct StopIndexingEvent::State {
  platform::NamedEvent event;
};

StopIndexingEvent::StopIndexingEvent() : state_(std::make_unique<State>()) {}

StopIndexingEvent::~StopIndexingEvent() = default;

int StopIndexingEvent::Set() {
  return state_->event.Set() ? 1 : 0;
}

bool StopIndexingEvent::IsSet() const {
  return state_->event.IsSet();
}

std::unique_ptr<StopIndexingEvent> GetStopIndexingEvent(const char* name, int create) {
  const std::string eventName = std::string(name) + ":stop";
  std::unique_ptr<StopIndexingEvent> event(new StopIndexingEvent);
  platform::NamedEvent& system = event->state_->event;
  const bool succeeded = create != 0 ? system.Create(eventName) : system.Open(eventName);
  return succeeded ? std::move(event) : nullptr;
}

}  // namespace vemra
