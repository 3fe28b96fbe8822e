// CreateObject: creates component objects by class identifier, for callers inside the component. Any thread.

#pragma once

#include <gllib/GLPtr.h>

#include "component/Catalogue.h"

/// Creates an object of a class of the module, in the same way as for a host.
/// @return a counted pointer; null if the object cannot be created
template <class Interface>
GLPtr<Interface> CreateObject(REFCLSID aClassId) noexcept {
  GLPtr<Interface> result;
  if (const CatalogueEntry* entry = FindInCatalogue(aClassId)) {
    entry->m_pfnCreate(nullptr, GLIdentifierOf<Interface>(), result.PutVoid());
  }
  return result;
}
