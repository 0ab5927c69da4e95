#pragma once

#include <cstdint>
#include <string>

#include "Support/services/dde/DDEObject.h"
#include "Support/services/dde/DDETypes.h"

namespace vemra {

class CDDEServer;

// One string handle of the management library, made from a text and freed with this object, or
// with the server's Shutdown if that comes first.
class SUPPORT_API CHSZ : public DDEObject {
 public:
  CHSZ() = default;  // no handle
  CHSZ(const CDDEServer& server, const std::string& text) { Create(server, text); }
  ~CHSZ() override { Free(); }

  static const DDEClass& Class();
  const DDEClass& GetRuntimeClass() const override { return Class(); }

  // Frees the earlier handle. 0, with no handle, when the server is not created, or the text is
  // empty or longer than 255 characters.
  int Create(const CDDEServer& server, const std::string& text);
  void Free();

  // NOLINTNEXTLINE(google-explicit-constructor): a name is passed where its handle is asked for
  operator DDEString() const { return handle_; }

 private:
  DDEString handle_ = DDEString::kNone;
  std::uint32_t instance_ = 0;
};

}  // namespace vemra
