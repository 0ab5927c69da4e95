#include "Support/services/PropertyHolder.h"

namespace vemra {

TavoPropertyHolder::TavoPropertyHolder() = default;
TavoPropertyHolder::TavoPropertyHolder(const TavoPropertyHolder& other) = default;
TavoPropertyHolder& TavoPropertyHolder::operator=(const TavoPropertyHolder& other) = default;
TavoPropertyHolder::~TavoPropertyHolder() = default;

TavoPropertyArray& TavoPropertyHolder::GetProperties() {
  return properties_;
}

HolderReturn TavoPropertyHolder::OnPropertyChange(const TavoProperty& /*property*/) {
  return HolderAccepted;
}

void TavoPropertyHolder::SaveProperties() {}

void TavoPropertyHolder::Initialize() {
  properties_.RemoveAll();
}

}  // namespace vemra
