#pragma once

#include "python.hpp"

namespace campotipo::python {

// A structure of the Arrow interface in a capsule, which releases it unless someone took it.
template <class Structure>
PyObject *capsule_of(Structure structure, const char *name) {
  auto *held = new Structure(structure);
  PyObject *capsule = PyCapsule_New(held, name, [](PyObject *self) {
    auto *inside = static_cast<Structure *>(PyCapsule_GetPointer(self, PyCapsule_GetName(self)));
    if (inside->release != nullptr) inside->release(inside);
    delete inside;
  });
  if (capsule == nullptr) {
    held->release(held);
    delete held;
  }
  return capsule;
}

}  // namespace campotipo::python
