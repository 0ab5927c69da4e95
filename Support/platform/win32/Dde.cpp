#include "Support/platform/Dde.h"

#include <windows.h>
// The management library's header builds on the one above.
#include <ddeml.h>

#include <algorithm>
#include <limits>

namespace vemra::platform {
namespace {

constexpr DWORD kMaxNameLength = 255;

// Our handles are the system's, as numbers.
static_assert(sizeof(DDEString) == sizeof(HSZ) && sizeof(DDEData) == sizeof(HDDEDATA) &&
              sizeof(DDEConversation) == sizeof(HCONV) && sizeof(DDEStringPair) == sizeof(HSZPAIR));

HSZ ToSystem(DDEString string) {
  return reinterpret_cast<HSZ>(static_cast<std::uintptr_t>(string));
}
HDDEDATA ToSystem(DDEData data) {
  return reinterpret_cast<HDDEDATA>(static_cast<std::uintptr_t>(data));
}
HCONV ToSystem(DDEConversation conversation) {
  return reinterpret_cast<HCONV>(static_cast<std::uintptr_t>(conversation));
}
DDEString FromSystem(HSZ string) {
  return DDEString{reinterpret_cast<std::uintptr_t>(string)};
}
DDEData FromSystem(HDDEDATA data) {
  return DDEData{reinterpret_cast<std::uintptr_t>(data)};
}
DDEConversation FromSystem(HCONV conversation) {
  return DDEConversation{reinterpret_cast<std::uintptr_t>(conversation)};
}

// A handle is passed as a number of its size is, so one function is both kinds of callback.
PFNCALLBACK ToSystem(DDECallback callback) {
  return reinterpret_cast<PFNCALLBACK>(reinterpret_cast<void (*)()>(callback));
}

// Calls take their bytes as writable, and a null pointer as something else.
BYTE* ToBytes(const void* bytes) {
  static BYTE nothing = 0;
  return bytes == nullptr ? &nothing : static_cast<BYTE*>(const_cast<void*>(bytes));
}

class SystemDde final : public DdeManager {
 public:
  std::uint32_t Initialize(std::uint32_t* instance, DDECallback callback,
                           std::uint32_t flags) override {
    DWORD number = 0;
    const UINT error = ::DdeInitializeA(&number, ToSystem(callback), flags, 0);
    *instance = number;
    return error;
  }
  bool Uninitialize(std::uint32_t instance) override { return ::DdeUninitialize(instance) != 0; }
  std::uint32_t GetLastError(std::uint32_t instance) override {
    return ::DdeGetLastError(instance);
  }
  bool RegisterName(std::uint32_t instance, DDEString name) override {
    return ::DdeNameService(instance, ToSystem(name), nullptr, DNS_REGISTER) != nullptr;
  }
  bool UnregisterName(std::uint32_t instance, DDEString name) override {
    return ::DdeNameService(instance, ToSystem(name), nullptr, DNS_UNREGISTER) != nullptr;
  }

  DDEString CreateStringHandle(std::uint32_t instance, const std::string& text) override {
    return FromSystem(::DdeCreateStringHandleA(instance, text.c_str(), CP_WINANSI));
  }
  bool FreeStringHandle(std::uint32_t instance, DDEString string) override {
    return ::DdeFreeStringHandle(instance, ToSystem(string)) != 0;
  }
  bool QueryString(std::uint32_t instance, DDEString string, std::string* text) override {
    char buffer[kMaxNameLength + 1] = "";
    if (string == DDEString::kNone ||
        ::DdeQueryStringA(instance, ToSystem(string), buffer, sizeof buffer, CP_WINANSI) == 0) {
      return false;
    }
    *text = buffer;
    return true;
  }
  int CompareStringHandles(DDEString a, DDEString b) override {
    return ::DdeCmpStringHandles(ToSystem(a), ToSystem(b));
  }

  DDEData CreateDataHandle(std::uint32_t instance, const void* bytes, std::uint32_t size,
                           DDEString item, std::uint16_t format) override {
    return FromSystem(
        ::DdeCreateDataHandle(instance, ToBytes(bytes), size, 0, ToSystem(item), format, 0));
  }
  const std::uint8_t* AccessData(DDEData data, std::uint32_t* size) override {
    DWORD bytes = 0;
    const BYTE* const first =
        data == DDEData::kNone ? nullptr : ::DdeAccessData(ToSystem(data), &bytes);
    *size = bytes;
    return first;
  }
  bool UnaccessData(DDEData data) override { return ::DdeUnaccessData(ToSystem(data)) != 0; }
  bool FreeDataHandle(DDEData data) override { return ::DdeFreeDataHandle(ToSystem(data)) != 0; }

  DDEConversation Connect(std::uint32_t instance, DDEString service, DDEString topic) override {
    return FromSystem(::DdeConnect(instance, ToSystem(service), ToSystem(topic), nullptr));
  }
  bool Disconnect(DDEConversation conversation) override {
    return ::DdeDisconnect(ToSystem(conversation)) != 0;
  }
  bool QueryConversation(DDEConversation conversation, DdeConversationState* state) override {
    CONVINFO info{};
    info.cb = sizeof info;
    if (::DdeQueryConvInfo(ToSystem(conversation), QID_SYNC, &info) == 0) return false;
    state->connected = (info.wStatus & ST_CONNECTED) != 0;
    state->sameInstance = (info.wStatus & ST_ISSELF) != 0;
    state->lastError = info.wLastError;
    return true;
  }
  DDEData ClientTransaction(const void* bytes, std::uint32_t size, DDEConversation conversation,
                            DDEString item, std::uint16_t format, DDETransaction type,
                            std::uint32_t timeoutMilliseconds) override {
    // The largest size and time have meanings of their own.
    constexpr std::uint32_t kTaken = std::numeric_limits<std::uint32_t>::max();
    if (size == kTaken || timeoutMilliseconds == kTaken) return DDEData::kNone;
    const bool sends = type == kDDEPoke || type == kDDEExecute;
    return FromSystem(::DdeClientTransaction(sends ? ToBytes(bytes) : nullptr, sends ? size : 0,
                                             ToSystem(conversation), ToSystem(item), format, type,
                                             timeoutMilliseconds, nullptr));
  }
  bool PostAdvise(std::uint32_t instance, DDEString topic, DDEString item) override {
    return ::DdePostAdvise(instance, ToSystem(topic), ToSystem(item)) != 0;
  }

  std::uint16_t RegisterFormat(const std::string& name) override {
    return static_cast<std::uint16_t>(::RegisterClipboardFormatA(name.c_str()));
  }
  std::string GetFormatName(std::uint16_t format) override {
    char name[256 + 1] = "";
    const int length = ::GetClipboardFormatNameA(format, name, sizeof name);
    return {name, static_cast<std::size_t>(std::max(length, 0))};
  }

  void HandleMessages(std::uint32_t milliseconds) override {
    const ULONGLONG end = ::GetTickCount64() + milliseconds;
    for (;;) {
      MSG message{};
      while (::PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE) != 0) {
        if (message.message == WM_QUIT) {  // for the program's own loop
          ::PostQuitMessage(static_cast<int>(message.wParam));
          return;
        }
        ::TranslateMessage(&message);
        ::DispatchMessageA(&message);
      }
      const ULONGLONG now = ::GetTickCount64();
      if (now >= end) return;
      ::MsgWaitForMultipleObjects(0, nullptr, FALSE, static_cast<DWORD>(end - now), QS_ALLINPUT);
    }
  }
};

}  // namespace

DdeManager& GetSystemDdeManager() {
  static SystemDde manager;
  return manager;
}

}  // namespace vemra::platform
