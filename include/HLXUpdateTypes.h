#ifndef HLX_UPDATE_TYPES_H
#define HLX_UPDATE_TYPES_H

/// @addtogroup update
/// @{

/// Values of the update client. Those without a name here are passed on unchanged.
namespace HLXUpdate {

/// Outcome of the search for an update package.
enum UpdateNotifyResult : int {
  UPDATE_NOTIFY_VALID = 1,             ///< checksums, version, hardware and project are right
  UPDATE_NOTIFY_REMOVED = 2,           ///< the service says that there is no package any more
  UPDATE_NOTIFY_CAN_FILE = 3,          ///< the stick holds an update file for the CAN box
  UPDATE_NOTIFY_CHECKSUM_WRONG = 4,    ///< or a newer search overtook this one while it verified checksums
  UPDATE_NOTIFY_VERSION_OLDER = 5,     ///< the package is older than the unit
  UPDATE_NOTIFY_HARDWARE_DIFFERS = 6,  ///< the package is for other hardware
  UPDATE_NOTIFY_PROJECT_DIFFERS = 7,   ///< the package is for another project
};

/// What to update.
enum UpdateType : int {
  UPDATE_TYPE_MPU = 0,  ///< the main processor
  UPDATE_TYPE_MCU = 1,  ///< the MCU
  UPDATE_TYPE_ALL = 2,  ///< both
};

/// The service's answer to an update request; one byte on D-Bus.
enum OpResult : int {
  OP_RESULT_OK = 0,      ///< accepted
  OP_RESULT_FAILED = 1,  ///< refused
  OP_RESULT_BUSY = 2,    ///< refused, since an update is running
};

/// How far the update of the MCU or of the main processor is.
enum UpdateState : int {
  UPDATE_STATE_IDLE = 0,     ///< nothing is being updated
  UPDATE_STATE_STARTED = 1,  ///< about to begin
  UPDATE_STATE_RUNNING = 2,  ///< being written
  UPDATE_STATE_SUCCESS = 3,  ///< done
  UPDATE_STATE_FAILED = 4,   ///< broken off
};

/// The stick with the package. 0 and 2 start a search.
enum UpdatePackageState : int {
  UPDATE_PACKAGE_INSERTED = 0,  ///< a stick came
  UPDATE_PACKAGE_REMOVED = 1,   ///< it went
  UPDATE_PACKAGE_CHANGED = 2,   ///< what it holds changed
};

}  // namespace HLXUpdate

/// @}

#endif
