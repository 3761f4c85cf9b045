// What a stored class declares for the persistent store (ddb_dev__pdb.h has the store's
// transfers): DEV_PDB_FRIEND(CLASS) lets the class's serialiser read and write its members.
// Each stored class lists its persistent fields, in stored order, beside its declaration as
// DEV_<CLASS>_PDB_FIELDS(F); the serialiser is that list and one line in ddb_dev__pdb.cpp.
#ifndef VELCORA_DEV_PERSISTENT_H
#define VELCORA_DEV_PERSISTENT_H

#include "dev_export.h"
#include "host/pdb.h"

#define DEV_PDB_FRIEND(CLASS) friend DEV_EXPORT PDB_DDB_SEGMENT& operator<<(PDB_DDB_SEGMENT& seg, CLASS& object);

// The persistent store's access to a handle's body (ddb_dev__pdb.h).
template <typename HANDLE>
struct DEV_PDB_HANDLE_ACCESS;

#endif
