// UtSyncMgrTokenBase: a named synchronisation-manager token with an owned data item
// (UtIOFDataItem) and four selection masks.
#pragma once

#include <afx/CString.h>
#include <iof/UtIOFDataItem.h>
#include <cstdint>

namespace IOF {

// A named token with an owned data item and four selection masks.
class UtSyncMgrTokenBase {
 public:
  // Takes `data` over (null allowed); the masks start at zero.
  UtSyncMgrTokenBase(const CString& name, UtIOFDataItem* data);
  UtSyncMgrTokenBase(const UtSyncMgrTokenBase& other);  // clones the data item
  UtSyncMgrTokenBase& operator=(const UtSyncMgrTokenBase& other);
  virtual ~UtSyncMgrTokenBase();

  const CString& GetName() const noexcept { return m_Name; }
  UtIOFDataItem* GetData() noexcept { return m_Data; }
  const UtIOFDataItem* GetConstData() const noexcept { return m_Data; }
  // The data item's type (None without data).
  IOFAttrbType GetType() const noexcept { return m_Data ? m_Data->GetDataType() : IOFAttrbType::None; }
  int GetSubFunction() const noexcept { return m_SubFunction; }
  void SetSubFunction(int subFunction) noexcept { m_SubFunction = subFunction; }

  std::uint32_t GetConfigMask() const noexcept { return m_ConfigMask; }
  void SetConfigMask(std::uint32_t mask) noexcept { m_ConfigMask = mask; }
  std::uint32_t GetOpTypeMask() const noexcept { return m_OpTypeMask; }
  void SetOpTypeMask(std::uint32_t mask) noexcept { m_OpTypeMask = mask; }
  std::uint32_t GetMachineTypeMask() const noexcept { return m_MachineTypeMask; }
  void SetMachineTypeMask(std::uint32_t mask) noexcept { m_MachineTypeMask = mask; }
  std::uint32_t GetMillTypeMask() const noexcept { return m_MillTypeMask; }
  void SetMillTypeMask(std::uint32_t mask) noexcept { m_MillTypeMask = mask; }

  // "Token (name) Data: data;  Config 1f; OpTypes 3" (two blanks before Config).
  virtual CString ToString() const;
  // Sends ToString() to the trace channel in debug builds.
  virtual void TraceDump() const;

 private:
  CString m_Name;
  UtIOFDataItem* m_Data = nullptr;
  std::uint32_t m_ConfigMask = 0;
  std::uint32_t m_OpTypeMask = 0;
  std::uint32_t m_MachineTypeMask = 0;
  std::uint32_t m_MillTypeMask = 0;
  int m_SubFunction = 0;
};

}  // namespace IOF
