#include "support/FailingVfs.h"

#include <sqlite3.h>

#include <cstring>

namespace nimbrel::testing {
namespace {

FailingVfs* active = nullptr;
sqlite3_vfs shim{};
sqlite3_vfs* real = nullptr;

/// What SQLite sees as its file, followed in memory by the real VFS's own.
struct ShimFile {
  sqlite3_file base;
};

sqlite3_file* inner(sqlite3_file* file) {
  return reinterpret_cast<sqlite3_file*>(reinterpret_cast<char*>(file) + sizeof(ShimFile));
}

bool writeFails() {
  if (active->failWrites) return true;
  if (active->writesBeforeFailure < 0) return false;
  return active->writesBeforeFailure.fetch_sub(1) <= 0 && (active->failWrites = true);
}

int shimClose(sqlite3_file* f) {
  return inner(f)->pMethods ? inner(f)->pMethods->xClose(inner(f)) : SQLITE_OK;
}
int shimRead(sqlite3_file* f, void* data, int count, sqlite3_int64 offset) {
  return active->failReads ? SQLITE_IOERR_READ : inner(f)->pMethods->xRead(inner(f), data, count, offset);
}
int shimWrite(sqlite3_file* f, const void* data, int count, sqlite3_int64 offset) {
  return writeFails() ? SQLITE_FULL : inner(f)->pMethods->xWrite(inner(f), data, count, offset);
}
int shimTruncate(sqlite3_file* f, sqlite3_int64 size) {
  return inner(f)->pMethods->xTruncate(inner(f), size);
}
int shimSync(sqlite3_file* f, int flags) {
  return inner(f)->pMethods->xSync(inner(f), flags);
}
int shimFileSize(sqlite3_file* f, sqlite3_int64* size) {
  return inner(f)->pMethods->xFileSize(inner(f), size);
}
int shimLock(sqlite3_file* f, int level) {
  return inner(f)->pMethods->xLock(inner(f), level);
}
int shimUnlock(sqlite3_file* f, int level) {
  return inner(f)->pMethods->xUnlock(inner(f), level);
}
int shimCheckLock(sqlite3_file* f, int* out) {
  return inner(f)->pMethods->xCheckReservedLock(inner(f), out);
}
int shimControl(sqlite3_file* f, int op, void* arg) {
  return inner(f)->pMethods->xFileControl(inner(f), op, arg);
}
int shimSectorSize(sqlite3_file* f) {
  return inner(f)->pMethods->xSectorSize(inner(f));
}
int shimTraits(sqlite3_file* f) {
  return inner(f)->pMethods->xDeviceCharacteristics(inner(f));
}
int shimShmMap(sqlite3_file* f, int page, int size, int extend, void volatile** out) {
  return inner(f)->pMethods->xShmMap(inner(f), page, size, extend, out);
}
int shimShmLock(sqlite3_file* f, int offset, int n, int flags) {
  return inner(f)->pMethods->xShmLock(inner(f), offset, n, flags);
}
void shimShmBarrier(sqlite3_file* f) {
  inner(f)->pMethods->xShmBarrier(inner(f));
}
int shimShmUnmap(sqlite3_file* f, int remove) {
  return inner(f)->pMethods->xShmUnmap(inner(f), remove);
}

const sqlite3_io_methods kMethods{
    2,           shimClose,      shimRead,      shimWrite,   shimTruncate,   shimSync,   shimFileSize,
    shimLock,    shimUnlock,     shimCheckLock, shimControl, shimSectorSize, shimTraits, shimShmMap,
    shimShmLock, shimShmBarrier, shimShmUnmap,  nullptr,     nullptr};

int shimOpen(sqlite3_vfs*, sqlite3_filename name, sqlite3_file* file, int flags, int* outFlags) {
  std::memset(inner(file), 0, static_cast<std::size_t>(real->szOsFile));
  const int code = real->xOpen(real, name, inner(file), flags, outFlags);
  if (active->readOnly && outFlags) *outFlags = (*outFlags & ~SQLITE_OPEN_READWRITE) | SQLITE_OPEN_READONLY;
  file->pMethods = code == SQLITE_OK ? &kMethods : nullptr;
  return code;
}

}  // namespace

FailingVfs::FailingVfs() {
  active = this;
  real = sqlite3_vfs_find(nullptr);
  shim = *real;
  shim.zName = "failing";
  shim.szOsFile = static_cast<int>(sizeof(ShimFile)) + real->szOsFile;
  shim.xOpen = shimOpen;
  shim.pNext = nullptr;
  sqlite3_vfs_register(&shim, 1);
}

FailingVfs::~FailingVfs() {
  sqlite3_vfs_unregister(&shim);
  sqlite3_vfs_register(real, 1);
  active = nullptr;
}

}  // namespace nimbrel::testing
