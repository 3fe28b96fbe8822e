// A host that makes an object by its ProgID and tells by its exit code how that went: 0 made, 1 not made, 2
// not made and privileged. With an argument it only tells whether it is privileged: 2, else 0.

#include <gllib/GLByProgID.h>
#include <gllib/GLIdentifiers.h>
#include <gllib/IGLCollection.h>

int main(int argc, char**) {
  const int privileged = GLRegistration::IsPrivileged() ? 2 : 0;
  if (argc > 1) return privileged;
  void* object = nullptr;
  const HRESULT made = GLCreateObjectByProgID("Gl.GLCollection.1", IID_IGLCollection, &object);
  return made == S_OK ? 0 : privileged != 0 ? privileged : 1;
}
