#include "database/sqlite/SqliteErrors.h"

#include <gtest/gtest.h>
#include <sqlite3.h>

#include <cerrno>

namespace tolvan::test {

// The failures that no test can bring about on a sound machine.
TEST(SqliteErrorsTest, CodesOfFailingDisksAndFoldersHaveTheirKind) {
  struct Case {
    int code;
    int systemError;
    HostErrorKind kind;
  };
  const Case cases[] = {
      {SQLITE_CANTOPEN, EROFS, HostErrorKind::Access},
      {SQLITE_CANTOPEN, ENOSPC, HostErrorKind::Full},
      {SQLITE_CANTOPEN, ENOENT, HostErrorKind::Unreachable},
      {SQLITE_IOERR_WRITE, ENOSPC, HostErrorKind::Full},
      {SQLITE_IOERR_WRITE, EDQUOT, HostErrorKind::Full},
      {SQLITE_IOERR_FSYNC, EIO, HostErrorKind::Unreachable},
      {SQLITE_IOERR_DATA, 0, HostErrorKind::Damaged},
      {SQLITE_IOERR_CORRUPTFS, EIO, HostErrorKind::Unreachable},
      {SQLITE_IOERR_NOMEM, 0, HostErrorKind::Failed},
      {SQLITE_CORRUPT_INDEX, 0, HostErrorKind::Damaged},
      {SQLITE_BUSY_SNAPSHOT, 0, HostErrorKind::Busy},
      {SQLITE_READONLY_DBMOVED, 0, HostErrorKind::Access},
      {SQLITE_CONSTRAINT_CHECK, 0, HostErrorKind::Constraint},
      {SQLITE_NOMEM, 0, HostErrorKind::Failed},
  };
  for (const Case& one : cases) EXPECT_EQ(KindOfSqliteCode(one.code, one.systemError), one.kind) << one.code;
}

}  // namespace tolvan::test
