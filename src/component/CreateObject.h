// CreateObject: creation of a component class by class identifier, from inside the component.
// Any thread.

#pragma once

#include <gllib/GLPtr.h>

#include "component/Catalogue.h"

/// Makes an object of a class of the module, as a host's request would.
/// @return a counted pointer; null when the object can't be made
template <class Interface>
GLPtr<Interface> CreateObject(REFCLSID aClassId) noexcept {
  GLPtr<Interface> result;
  if (const CatalogueEntry* entry = FindInCatalogue(aClassId)) {
    entry->m_pfnCreate(nullptr, GLIdentifierOf<Interface>(), result.PutVoid());
  }
  return result;
}
