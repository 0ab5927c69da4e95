#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

#include "Support/services/dde/DDETypes.h"

namespace vemra::platform {

struct DdeConversationState {
  bool connected = false;
  bool sameInstance = false;    // both sides belong to one instance
  std::uint32_t lastError = 0;  // of the conversation
};

// The DDE management library. On Windows it is the system's, and its conversations reach every
// program of the session; on Linux it is InProcessDde, and they stay within the process.
//
// A program registers a callback and gets an instance, whose number its other calls name. An
// instance belongs to the thread that made it: callbacks come on that thread, from within its own
// calls or from HandleMessages. A failed call leaves its reason to GetLastError. Names are 8-bit
// texts of 1 to 255 characters without NUL, equal without regard to case. No handle is taken on
// trust: one that is not alive fails the call.
class DdeManager {
 public:
  virtual ~DdeManager() = default;

  // 0 for success, else an error code. flags: DDEFlags.
  virtual std::uint32_t Initialize(std::uint32_t* instance, DDECallback callback,
                                   std::uint32_t flags) = 0;
  // Ends the instance's conversations and frees what it still owns.
  virtual bool Uninitialize(std::uint32_t instance) = 0;
  // The instance's latest error; asking resets it.
  virtual std::uint32_t GetLastError(std::uint32_t instance) = 0;
  // Several instances may have a service name in common; one instance takes it once.
  virtual bool RegisterName(std::uint32_t instance, DDEString name) = 0;
  virtual bool UnregisterName(std::uint32_t instance, DDEString name) = 0;

  // A handle to be freed as often as it was created. Equal names have equal handles, whose text is
  // as it was first spelled.
  virtual DDEString CreateStringHandle(std::uint32_t instance, const std::string& text) = 0;
  virtual bool FreeStringHandle(std::uint32_t instance, DDEString string) = 0;
  virtual bool QueryString(std::uint32_t instance, DDEString string, std::string* text) = 0;
  // 0 for the same name, also without regard to case; -1 when either is not valid.
  virtual int CompareStringHandles(DDEString a, DDEString b) = 0;

  // The block passes to the manager when it is returned from a callback.
  virtual DDEData CreateDataHandle(std::uint32_t instance, const void* bytes, std::uint32_t size,
                                   DDEString item, std::uint16_t format) = 0;
  // Null when it is no such block. The bytes are a loan until UnaccessData. The block may be larger
  // than what was stored in it.
  virtual const std::uint8_t* AccessData(DDEData data, std::uint32_t* size) = 0;
  virtual bool UnaccessData(DDEData data) = 0;
  // For blocks that a transaction returned; those of a callback's arguments are the manager's.
  virtual bool FreeDataHandle(DDEData data) = 0;

  // A null name is a wild connect: any service, any topic.
  virtual DDEConversation Connect(std::uint32_t instance, DDEString service, DDEString topic) = 0;
  virtual bool Disconnect(DDEConversation conversation) = 0;
  virtual bool QueryConversation(DDEConversation conversation, DdeConversationState* state) = 0;
  // A client's transaction: request, execute, poke, advise start or advise stop; waits for the
  // answer. A request returns the data, which the caller frees; the others kDDETrue. bytes are for
  // execute and poke only; the item is null for execute.
  virtual DDEData ClientTransaction(const void* bytes, std::uint32_t size,
                                    DDEConversation conversation, DDEString item,
                                    std::uint16_t format, DDETransaction type,
                                    std::uint32_t timeoutMilliseconds) = 0;
  // Asks the instance's own callback for the data of each advise loop on the item, and sends it. A
  // null name stands for all of them.
  virtual bool PostAdvise(std::uint32_t instance, DDEString topic, DDEString item) = 0;

  // The clipboard formats that have no number of their own. 0 when the name is empty or longer than
  // 255 characters; the same number for the same name, without regard to case.
  virtual std::uint16_t RegisterFormat(const std::string& name) = 0;
  virtual std::string GetFormatName(std::uint16_t format) = 0;  // empty: there is none

  // Handles what has come for the thread's instances, and what comes in this time.
  virtual void HandleMessages(std::uint32_t milliseconds) = 0;
};

// The manager of this process: the system's, where it has one, until another is set. Null sets the
// system's. Set only while no instance is alive.
DdeManager& GetDdeManager();
void SetDdeManager(DdeManager* manager);

DdeManager& GetSystemDdeManager();  // of each system: in posix/ and win32/

}  // namespace vemra::platform
