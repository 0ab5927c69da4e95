#pragma once

#include "Support/Export.h"
#include "Support/services/PropertyArray.h"

namespace vemra {

// What a component says to a changed property.
enum HolderReturn {
  HolderRefused = 0,  // the editor goes back to the value before
  HolderAccepted = 1,
  HolderChanged = 2,  // accepted, and other properties have changed with it: read them again
};

// The base of components that publish properties. Copying a holder copies its array.
class SUPPORT_API TavoPropertyHolder {
 public:
  TavoPropertyHolder();
  TavoPropertyHolder(const TavoPropertyHolder& other);
  TavoPropertyHolder& operator=(const TavoPropertyHolder& other);
  virtual ~TavoPropertyHolder();

  // The holder's own array, a loan for the holder's life.
  virtual TavoPropertyArray& GetProperties();
  // The editor has changed a property. The default accepts it.
  virtual HolderReturn OnPropertyChange(const TavoProperty& property);
  virtual void SaveProperties();  // does nothing by default
  virtual void Initialize();      // empties the array by default

 private:
  TavoPropertyArray properties_;
};

}  // namespace vemra
