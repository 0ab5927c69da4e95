#pragma once

#include <utility>

#include "Support/services/dde/DDEObject.h"

namespace vemra {

// An object on the heap that its holders share: the last one to release it destroys it. A new one
// has no holder yet; until it has one, whoever made it may still delete it.
class SUPPORT_API CDDECountedObject : public DDEObject {
 public:
  static const DDEClass& Class();
  const DDEClass& GetRuntimeClass() const override { return Class(); }

  // Both return the number of holders afterwards. Each AddRef is undone by one Release.
  int AddRef() { return ++holders_; }
  int Release();

 private:
  int holders_ = 0;
};

// One holder of a counted object.
template <typename T>
class DDEHolder {
 public:
  explicit DDEHolder(T* object = nullptr) : object_(object) {
    if (object_ != nullptr) object_->AddRef();
  }
  DDEHolder(const DDEHolder& other) : DDEHolder(other.object_) {}
  DDEHolder(DDEHolder&& other) noexcept : object_(std::exchange(other.object_, nullptr)) {}
  DDEHolder& operator=(DDEHolder other) noexcept {
    std::swap(object_, other.object_);
    return *this;
  }
  ~DDEHolder() {
    if (object_ != nullptr) object_->Release();
  }

  T* Get() const { return object_; }
  T* operator->() const { return object_; }
  T& operator*() const { return *object_; }

 private:
  T* object_;
};

}  // namespace vemra
