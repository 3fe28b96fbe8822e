// A host that creates an object by ProgID and returns the result as its exit code: 0 created, 1 failed, 2
// failed in a privileged process. With an argument it returns only whether the process is privileged: 2, else
// 0.

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
