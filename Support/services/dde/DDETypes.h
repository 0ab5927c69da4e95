#pragma once

#include <cstdint>

// What passes between a program and the DDE management library, by the numbers of the Windows
// calls, so that a program that knows those calls finds its way.
namespace vemra {

// Handles of the management library. Each type has its own null handle, kNone.
enum class DDEString : std::uintptr_t { kNone = 0 };        // a name: service, topic or item
enum class DDEConversation : std::uintptr_t { kNone = 0 };  // one side of a conversation
// A block of bytes, or the result of a callback: a callback answers with a block, a truth or flags,
// by its transaction.
enum class DDEData : std::uintptr_t { kNone = 0 };

constexpr DDEData kDDETrue{1};
constexpr DDEData kDDEAcknowledged{0x8000};  // an execute, poke or advise data that was handled
constexpr DDEData kDDEBusy{0x4000};          // ask again later
constexpr DDEData kDDENotProcessed{0};

// One line of the answer to a wild connect. The answer ends with a pair of null handles.
struct DDEStringPair {
  DDEString service = DDEString::kNone;
  DDEString topic = DDEString::kNone;
};

// The kinds of transactions, as the callback and CDDEConv name them.
enum DDETransaction : std::uint32_t {
  kDDEError = 0x8002,
  kDDEAdviseData = 0x4010,     // to the client: an item that it watches has changed
  kDDEAdviseRequest = 0x2022,  // to the server: give the data for that
  kDDEAdviseStart = 0x1030,
  kDDEAdviseStop = 0x8040,
  kDDEExecute = 0x4050,
  kDDEConnect = 0x1062,
  kDDEConnectConfirm = 0x8072,
  kDDETransactionComplete = 0x8080,
  kDDEPoke = 0x4090,
  kDDERegister = 0x80A2,  // a service name came or went
  kDDERequest = 0x20B0,
  kDDEDisconnect = 0x80C2,
  kDDEUnregister = 0x80D2,
  kDDEWildConnect = 0x20E2,
};

// Flags of CDDEServer::Create: transactions that the management library refuses or keeps back
// without asking.
enum DDEFlags : std::uint32_t {
  kDDEClientOnly = 0x10,  // no service: names cannot be registered
  kDDEFailSelfConnections = 0x1000,
  kDDEFailConnections = 0x2000,
  kDDEFailAdvises = 0x4000,
  kDDEFailExecutes = 0x8000,
  kDDEFailPokes = 0x10000,
  kDDEFailRequests = 0x20000,
  kDDESkipConnectConfirms = 0x40000,
  kDDESkipRegistrations = 0x80000,
  kDDESkipUnregistrations = 0x100000,
  kDDESkipDisconnects = 0x200000,
};

// What CDDEServer::GetLastError tells.
enum DDEErrorCode : std::uint32_t {
  kDDENoError = 0,
  kDDEErrorBusy = 0x4001,
  kDDEErrorNotInitialized = 0x4003,  // no such instance
  kDDEErrorUsage = 0x4004,           // not allowed to a program of its kind
  kDDEErrorInvalidParameter = 0x4006,
  kDDEErrorNotProcessed = 0x4009,    // the other side refused
  kDDEErrorNoConversation = 0x400A,  // nobody answers, or the conversation has ended
  kDDEErrorReentrancy = 0x400D,      // a transaction is still being waited for
  kDDEErrorServerDied = 0x400E,
  kDDEErrorSystem = 0x400F,
};

// The callback given to the management library. What the strings, the data and the two values are
// depends on the transaction:
//
//   transaction             string 1      string 2  data           result
//   connect                 topic         service   -              kDDETrue or none
//   wild connect            topic or null service or null  -       pairs, or none
//   connect confirm         topic         service   -              -
//   request, advise request topic         item      -              the data, or none
//   poke, advise data       topic         item      the data       acknowledged, busy or none
//   execute                 topic         -         the command    the same
//   advise start            topic         item      -              kDDETrue or none
//   advise stop             topic         item      -              -
//   disconnect              -             -         -              -
//   register, unregister    service       the service's own name of this instance
//
// Value 2 is 1 in a connect, wild connect, connect confirm or disconnect between two sides of one
// and the same instance.
using DDECallback = DDEData (*)(std::uint32_t type, std::uint32_t format,
                                DDEConversation conversation, DDEString string1, DDEString string2,
                                DDEData data, std::uintptr_t value1, std::uintptr_t value2);

}  // namespace vemra
