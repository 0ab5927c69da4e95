#include "Support/services/dde/HSZ.h"

#include <utility>

#include "Support/platform/Dde.h"
#include "Support/services/dde/DDEServer.h"

namespace vemra {

int CHSZ::Create(const CDDEServer& server, const std::string& text) {
  Free();
  instance_ = server.GetInstance();
  handle_ = platform::GetDdeManager().CreateStringHandle(instance_, text);
  return handle_ == DDEString::kNone ? 0 : 1;
}

void CHSZ::Free() {
  const DDEString freed = std::exchange(handle_, DDEString::kNone);
  if (freed == DDEString::kNone) return;
  // The instance's end has freed all of its handles.
  const CDDEServer* const server = CDDEServer::GetServer();
  if (server != nullptr && server->GetInstance() == instance_)
    platform::GetDdeManager().FreeStringHandle(instance_, freed);
}

}  // namespace vemra
