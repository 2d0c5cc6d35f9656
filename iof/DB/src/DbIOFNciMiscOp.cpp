#include <iof/DbIOFNciMiscOp.h>

#include "RecordImpl.h"
#include "TextTable.h"

namespace IOF {

IOF_IMPLEMENT_ABSTRACT_RECORD(DbIOFNciMiscOp)

template <class F, class... R>
void DbIOFNciMiscOp::Fields(F&& f, R&... r) {
  f(Field::V(0), "m_StreamId", r.m_StreamId...);
}

const wchar_t* DbIOFNciMiscOp::SpindleText(int spindle) noexcept {
  static constexpr const wchar_t* kTexts[] = {L"LH_HEAD", L"RH_HEAD", L"INVALID"};
  return Detail::TextOf(spindle, kTexts, L"Oops");
}

CString DbIOFNciMiscOp::ToIOFString() const { return CString(L"IOF NCI Base Misc Operation Object"); }

bool DbIOFNciMiscOp::Compare(const Quarp::DbCPtr<DbIOFBase>& other, CString& report) const {
  const auto* o = CompareTarget<DbIOFNciMiscOp>(other, report);
  return o && DbIOFNciBase::Compare(other, report) && CompareProperty(m_StreamId, o->m_StreamId, L"m_StreamId", report);
}

}  // namespace IOF
