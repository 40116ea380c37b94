#include "data/SystemShmDataBase.h"

#include <sys/ipc.h>
#include <sys/shm.h>

#include <cerrno>
#include <cstdint>
#include <cstring>

#include "platform/HLXLog.h"

HLX_LOG_SOURCE("data/HLXSystemData");

SystemShmDataBase::SystemShmDataBase(unsigned long long key, HLXSystemData::Shm_Op_Mode mode, const std::string& name)
    : default_data(std::make_unique<SystemDefaultData>()), shm_key(key), op_mode(mode) {
  HLX_LOG_INFO("system share data:%s", name.c_str());
}

bool SystemShmDataBase::CreateDataShm(void** out_addr, unsigned int size) {
  const int permissions = op_mode == HLXSystemData::SHM_OP_CREATE ? HLX_SHM_CREATE_BITS : HLX_SHM_ATTACH_BITS;
  const int id = shmget(static_cast<key_t>(shm_key), size, IPC_CREAT | permissions);
  if (id == -1) {
    HLX_LOG_ERROR("system data info shmget failed:%s", std::strerror(errno));
    return false;
  }
  *out_addr = shmat(id, nullptr, 0);
  if (reinterpret_cast<std::intptr_t>(*out_addr) == -1) {
    HLX_LOG_ERROR("system data info  shmat failed:%s", std::strerror(errno));
    return false;
  }
  return true;
}
