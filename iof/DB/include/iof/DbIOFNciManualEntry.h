// DbIOFNciManualEntry: a text the user entered by hand, output as a comment or as NC
// code, optionally together with the next move and protected from the post processor.
// Type IOFNCIMANUALENTRY (0x5117); its G-code defaults to 1005, the code of a manual
// entry.
//
//   auto entry = IOF::DbIOFNciManualEntry::Create();
//   entry->SetComment(L"CHECK CLAMPS");
//   entry->SetIncludeWithMove(true);
//   operation->PushBack(mgr.Add(entry));
//
// Archive (version 1), after DbIOFNciBase: m_ReadOnlyWhenPosting (1), m_Comment,
// m_OutputCommentAsCode (1), m_IncludeWithMove (1). The newest field stands first: a
// version 0 archive starts directly with the comment and m_ReadOnlyWhenPosting stays
// false.
#pragma once

#include <iof/DbIOFNciBase.h>

namespace IOF {

class DbIOFNciManualEntry : public DbIOFNciBase {
  IOF_RECORD(DbIOFNciManualEntry, DbIOFNciBase)

 public:
  static constexpr unsigned kVersion = 1;

  CString GetComment() const { return m_Comment; }
  void SetComment(const CString& comment) { m_Comment = comment; }
  bool GetOutputCommentAsCode() const noexcept { return m_OutputCommentAsCode; }
  void SetOutputCommentAsCode(bool asCode) noexcept { m_OutputCommentAsCode = asCode; }
  bool GetIncludeWithMove() const noexcept { return m_IncludeWithMove; }
  void SetIncludeWithMove(bool include) noexcept { m_IncludeWithMove = include; }
  bool GetReadOnlyWhenPosting() const noexcept { return m_ReadOnlyWhenPosting; }
  void SetReadOnlyWhenPosting(bool readOnly) noexcept { m_ReadOnlyWhenPosting = readOnly; }

  // "G%d %s - OutAs: %s, Include With Move: %s, Read Only When Posting: %s": G-code,
  // comment, "Code" or "Comment", then "Yes" or "No" for the two flags.
  CString ToIOFString() const override;
  // DbIOFNciBase, then m_Comment, m_OutputCommentAsCode, m_IncludeWithMove,
  // m_ReadOnlyWhenPosting.
  bool Compare(const Quarp::DbCPtr<DbIOFBase>& other, CString& report) const override;

 protected:
  DbIOFNciManualEntry() { SetGCode(1005); }

 private:
  bool m_ReadOnlyWhenPosting = false;  // the post processor may not change it; since version 1
  CString m_Comment;                   // the text entered by hand
  bool m_OutputCommentAsCode = false;  // true: output the text as NC code; false: as a comment
  bool m_IncludeWithMove = false;      // output together with the next move
};

}  // namespace IOF
