#pragma once

#include <memory>
#include <string>

#include "Support/Export.h"

namespace vemra {

class DDEObject;

// What is known of a class of the DDE framework at run time. Classes are compared by address.
struct DDEClass {
  const char* name;
  const DDEClass* base;  // null for the root
  std::unique_ptr<DDEObject> (*create)();
};

// The root of the DDE framework's classes: run-time typed and creatable by class name.
//
// The framework is used on one thread: the one that created the server. It takes no locks.
class SUPPORT_API DDEObject {
 public:
  DDEObject() = default;
  DDEObject(const DDEObject&) = delete;
  DDEObject& operator=(const DDEObject&) = delete;

  static const DDEClass& Class();
  virtual const DDEClass& GetRuntimeClass() const { return Class(); }
  virtual ~DDEObject() = default;

  // 1 when the object is of the class or of one derived from it.
  int IsKindOf(const DDEClass& base) const;
};

// A new object of the framework's class, as its constructor without arguments makes it. Null when
// no class has that name.
SUPPORT_API std::unique_ptr<DDEObject> CreateDDEObject(const std::string& className);

}  // namespace vemra
