#include <glib.h>
#include <sqlite3.h>
#include <sys/stat.h>

#include <cerrno>
#include <cstring>
#include <memory>
#include <mutex>
#include <set>
#include <string>

#include "platform/Q4PersistService.h"
#include "platform/host/HostLog.h"
#include "platform/host/HostPaths.h"

HLX_LOG_SOURCE("platform/host/HostPersist");

namespace {

struct DatabaseDeleter {
  void operator()(sqlite3* database) const { sqlite3_close_v2(database); }
};
struct StatementDeleter {
  void operator()(sqlite3_stmt* statement) const { sqlite3_finalize(statement); }
};
using Database = std::unique_ptr<sqlite3, DatabaseDeleter>;
using Statement = std::unique_ptr<sqlite3_stmt, StatementDeleter>;

/// How long a call waits for a file that another process has locked, and how long those do that follow a wait in vain:
/// a start that reads ten settings from a locked file waits once.
constexpr int kPatienceMs = 2000;
constexpr int kHasteMs = 20;
// EXTRA also syncs the directory after the journal is gone: without it a power cut may undo the last commit.
constexpr char kSchema[] =
    "PRAGMA synchronous = EXTRA;"
    "CREATE TABLE IF NOT EXISTS items (module INTEGER, id INTEGER, value INTEGER NOT NULL, PRIMARY KEY (module, id))"
    " WITHOUT ROWID";

// What is there already is not written again: no sync of the disk for it.
constexpr char kUpsert[] =
    "INSERT INTO items VALUES (?1, ?2, ?3) ON CONFLICT (module, id) DO UPDATE SET value = excluded.value"
    " WHERE value IS NOT excluded.value";

enum Purpose { kRead, kWrite };

/// The persist code that fits what SQLite says. What SQLite is content with may still be an absent item (6), a value
/// that does not fit (9) or is no number (8), or a negative module (11).
int PersistCode(int sqlite_result, Purpose purpose) {
  switch (sqlite_result & 0xFF) {
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
      return PERSIST_ERROR_DATABASE_NOT_READY;
    case SQLITE_NOTADB:
      return PERSIST_ERROR_FORMAT_INCOMPATIBLE;
    case SQLITE_CANTOPEN:
      return purpose == kRead ? PERSIST_ERROR_SERVICE_NOT_AVAILABLE : PERSIST_ERROR_WRITE_FAIL;
    default:
      return purpose == kRead ? PERSIST_ERROR_READ_FAIL : PERSIST_ERROR_WRITE_FAIL;
  }
}

/// Settings in an SQLite file: HLX_HOST_PERSIST, else persist.db in the state directory. Every write is on the disk
/// when it returns; several processes may use the file at once. A file that cannot be used is never touched: it is
/// named in the log, and looked at again with the next call. What could not be read because the file was locked is not
/// written before it was read: a default value that stands in does not take the saved one's place.
class HostPersist : public Q4PersistService {
 public:
  int ReadByte(int module, int id, unsigned char* value) override {
    int number = 0;
    const int result = ReadInt(module, id, &number);
    if (result != PERSIST_OK) return result;
    if (number < 0 || number > 255) return PERSIST_ERROR_DATA_OVER_RANGE;
    *value = static_cast<unsigned char>(number);
    return PERSIST_OK;
  }

  int ReadInt(int module, int id, int* value) override {
    if (module < 0) return PERSIST_ERROR_ILLEGAL_MODULE;
    const std::lock_guard<std::mutex> lock(mutex_);
    const int result = Read(module, id, value);
    if (result == PERSIST_ERROR_DATABASE_NOT_READY) {
      unread_.insert({module, id});
    } else {
      unread_.erase({module, id});
    }
    return result;
  }

  int WriteInt(int module, int id, int value, int /*flag*/) override { return Write(module, id, value); }
  int WriteInt(int module, int id, int value, int /*a*/, int /*b*/, int /*c*/) override {
    return Write(module, id, value);
  }

 private:
  static std::string Path() {
    const std::string named = host::Environment("HLX_HOST_PERSIST");
    return named.empty() ? host::StateDirectory() + "/persist.db" : named;
  }

  int Read(int module, int id, int* value) {
    // A file that nobody has written yet holds nothing; looking is no reason to make one.
    if (struct stat status{}; stat(Path().c_str(), &status) != 0 && errno == ENOENT) {
      return PERSIST_ERROR_DATA_NOT_FOUND;
    }
    if (Open(kRead) != SQLITE_OK) return Fail(kRead);
    const Statement query = Prepare("SELECT value FROM items WHERE module = ?1 AND id = ?2", module, id);
    const int result = query == nullptr ? SQLITE_ERROR : sqlite3_step(query.get());
    if (result != SQLITE_ROW && result != SQLITE_DONE) return Fail(kRead);
    waited_in_vain_[kRead] = false;
    if (result == SQLITE_DONE) return PERSIST_ERROR_DATA_NOT_FOUND;
    // Somebody else's hand may have put in what WriteInt cannot.
    if (sqlite3_column_type(query.get(), 0) != SQLITE_INTEGER) return PERSIST_ERROR_FORMAT_INCOMPATIBLE;
    const sqlite3_int64 number = sqlite3_column_int64(query.get(), 0);
    if (number < G_MININT32 || number > G_MAXINT32) return PERSIST_ERROR_DATA_OVER_RANGE;
    *value = static_cast<int>(number);
    return PERSIST_OK;
  }

  int Write(int module, int id, int value) {
    if (module < 0) return PERSIST_ERROR_ILLEGAL_MODULE;
    const std::lock_guard<std::mutex> lock(mutex_);
    if (unread_.count({module, id}) != 0) return PERSIST_ERROR_DATABASE_NOT_READY;
    g_autofree gchar* directory = g_path_get_dirname(Path().c_str());
    g_mkdir_with_parents(directory, 0700);  // a failure shows when the file is opened
    if (Open(kWrite) != SQLITE_OK) return Fail(kWrite);
    const Statement update = Prepare(kUpsert, module, id);
    if (update == nullptr || sqlite3_bind_int(update.get(), 3, value) != SQLITE_OK ||
        sqlite3_step(update.get()) != SQLITE_DONE) {
      return Fail(kWrite);
    }
    waited_in_vain_[kRead] = waited_in_vain_[kWrite] = false;
    return PERSIST_OK;
  }

  static ino_t Inode(const std::string& path) {
    struct stat status {};
    return stat(path.c_str(), &status) == 0 ? status.st_ino : 0;
  }

  /// Opens the file unless it is open; one that was replaced or removed meanwhile is opened anew.
  int Open(Purpose purpose) {
    const std::string path = Path();
    const ino_t inode = Inode(path);
    if (path != path_ || inode != inode_) {  // another file, with failures of its own
      database_.reset();
      complained_.clear();
      path_ = path;
    }
    const int timeout = waited_in_vain_[purpose] ? kHasteMs : kPatienceMs;
    if (database_ != nullptr) return sqlite3_busy_timeout(database_.get(), timeout);
    sqlite3* opened = nullptr;
    int result = sqlite3_open_v2(path.c_str(), &opened, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE, nullptr);
    database_.reset(opened);
    if (result == SQLITE_OK) result = sqlite3_busy_timeout(opened, timeout);
    if (result == SQLITE_OK) result = sqlite3_exec(opened, kSchema, nullptr, nullptr, nullptr);
    // A file that may only be read still serves for reading.
    if ((result & 0xFF) == SQLITE_READONLY) result = SQLITE_OK;
    if (result == SQLITE_OK && !IsSound()) result = SQLITE_CORRUPT;
    inode_ = Inode(path);  // it may have been made just now
    return result;
  }

  /// Whether the whole file is what SQLite makes: a damaged page may read as empty, and swallow what is written.
  bool IsSound() const {
    sqlite3_stmt* prepared = nullptr;
    sqlite3_prepare_v2(database_.get(), "PRAGMA integrity_check(1)", -1, &prepared, nullptr);
    const Statement check(prepared);
    return sqlite3_step(prepared) == SQLITE_ROW &&
           std::strcmp(reinterpret_cast<const char*>(sqlite3_column_text(prepared, 0)), "ok") == 0;
  }

  Statement Prepare(const char* sql, int module, int id) const {
    sqlite3_stmt* prepared = nullptr;
    if (sqlite3_prepare_v2(database_.get(), sql, -1, &prepared, nullptr) != SQLITE_OK) return nullptr;
    Statement statement(prepared);
    sqlite3_bind_int(prepared, 1, module);
    sqlite3_bind_int(prepared, 2, id);
    return statement;
  }

  /// Names the file and the cause, once for each kind of failure, and closes it so that the next call looks again.
  int Fail(Purpose purpose) {
    const int result = database_ == nullptr ? SQLITE_NOMEM : sqlite3_extended_errcode(database_.get());
    const std::string cause = database_ == nullptr  ? "out of memory"
                              : result == SQLITE_OK ? sqlite3_errstr(SQLITE_CORRUPT)  // it is not sound
                                                    : sqlite3_errmsg(database_.get());
    if (complained_.insert({result, purpose}).second) {
      HLX_HOST_COMPLAIN("settings file %s cannot be %s: %s", path_.c_str(), purpose == kRead ? "read" : "written",
                        cause.c_str());
    }
    database_.reset();
    const int code = PersistCode(result, purpose);
    if (code == PERSIST_ERROR_DATABASE_NOT_READY) {
      waited_in_vain_[kWrite] = true;  // what cannot be read cannot be written either
      waited_in_vain_[purpose] = true;
    }
    return code;
  }

  std::mutex mutex_;
  std::string path_;
  ino_t inode_ = 0;
  Database database_;
  bool waited_in_vain_[2] = {};           ///< by purpose: for the lock of another process, since it last worked
  std::set<std::pair<int, int>> unread_;  ///< items, by module and id, whose last read found the file locked
  std::set<std::pair<int, Purpose>> complained_;
};

}  // namespace

Q4PersistService* HLX_GetQ4PersistService() {
  static HostPersist& persist = *new HostPersist;
  return &persist;
}
