// DbErr: the database error codes of the framework.
//
// Three values are fixed by the record library: 3 (a list or record is in no manager),
// 12 (a record could not be constructed) and 16 (a cloned record could not be attached).
// The others are this framework's own; DbMgr::GetLastErrorText() says what went wrong
// in words.
#pragma once

namespace Quarp {

enum class DbErr : int {
  Ok = 0,
  NotFound = 1,          // no record with that id, or not of the requested class
  Io = 2,                // a file could not be opened, read, written or renamed
  NoManager = 3,         // the record is held by no manager
  NotAnIofFile = 4,      // empty, too short, or the magic number is wrong
  NewerFormat = 5,       // the file format version is newer than this library reads
  Corrupt = 6,           // checksum mismatch or a malformed structure
  UnknownClass = 7,      // a record's class is not registered in this process
  BadRecord = 8,         // a record's payload did not read back exactly
  ReadOnly = 9,          // the manager was opened read-only
  InvalidArgument = 10,  // a null record, or a record that is already in a manager
  ConstructFailed = 12,  // Create could not construct the record
  AttachFailed = 16,     // Clone could not attach the new record to its manager
};

const char* DbErrName(DbErr err) noexcept;

}  // namespace Quarp
