#include "tools/hlxctl/Area.h"
#include "tools/hlxctl/Monitor.h"
#include "tools/hlxctl/UpdateWords.h"
#include "tools/hlxctl/Versions.h"

using namespace HLXUpdate;
using U = IHLXSystemUpdate;

namespace {

constexpr Word kType[] = {{UPDATE_TYPE_MPU, "mpu"}, {UPDATE_TYPE_MCU, "mcu"}, {UPDATE_TYPE_ALL, "all"}};
constexpr Word kOpResult[] = {{OP_RESULT_OK, "ok"}, {OP_RESULT_FAILED, "failed"}, {OP_RESULT_BUSY, "busy"}};
constexpr Word kState[] = {{UPDATE_STATE_IDLE, "idle"},
                           {UPDATE_STATE_STARTED, "started"},
                           {UPDATE_STATE_RUNNING, "running"},
                           {UPDATE_STATE_SUCCESS, "success"},
                           {UPDATE_STATE_FAILED, "failed"}};
constexpr Word kPackage[] = {
    {UPDATE_PACKAGE_INSERTED, "inserted"}, {UPDATE_PACKAGE_REMOVED, "removed"}, {UPDATE_PACKAGE_CHANGED, "changed"}};

class UpdateEvents : public IHLXUpdateListener {
 public:
  explicit UpdateEvents(EventLog& log) : log_(log) {}

  void OnDetectValidUpdateFileNotify(UpdateNotifyResult result) override {
    Write(__func__, {{"result", Named{kUpdateOutcome}(result)}});
  }
  void OnUpdateRequestResultInform(OpResult result) override {
    Write(__func__, {{"result", Named{kOpResult}(result)}});
  }
  void OnUpdateCanProcess(int value) override { log_.WriteProgress("update", __func__, "CAN box", value); }
  void OnMcuUpdateStateNotify(UpdateState state) override { Write(__func__, {{"state", Named{kState}(state)}}); }
  void OnMpuUpdateStateNotify(UpdateState state) override { Write(__func__, {{"state", Named{kState}(state)}}); }
  void OnMcuUpdateProgressNotify(unsigned int progress) override {
    log_.WriteProgress("update", __func__, "MCU", progress);
  }
  void OnPackageStateChangeNotify(UpdatePackageState state) override {
    Write(__func__, {{"package", Named{kPackage}(state)}});
  }

 private:
  void Write(const char* event, const EventLog::Values& values) { log_.Write("update", event, values); }

  EventLog& log_;
};

std::vector<Field> Fields() {
  std::vector<Field> fields;
  AddVersionFields(fields, [](SystemInfo::VersionInfo& versions) { Proxy<U>().GetUpdateVersionInfo(versions); });
  return fields;
}

std::vector<Command> Commands() {
  constexpr bool kAsk = true;
  return {
      {"apply-all", "Update everything", {}, Call(&U::ApplyUpdateAll), kAsk},
      {"apply-mpu", "Update the main processor", {}, Call(&U::ApplyMpuUpdate), kAsk},
      {"apply-mcu", "Update the external MCU", {}, Call(&U::ApplyExternalMcuUpdate), kAsk},
      {"apply", "Update one part, or all", {Choice("type", kType)}, Call(&U::ApplyUpdate), kAsk},
      {"can", "Update of the CAN box", {Whole<int>("value")}, Call(&U::SetCanUpdata), kAsk},
  };
}

}  // namespace

Area UpdateArea() {
  Area area = InfoArea();  // the update client brings the info client, which maps the records
  area.name = "update";
  area.about = "software updates";
  area.fields = Fields();
  area.commands = Commands();
  area.listen = Listen<U, UpdateEvents>;
  area.warning =
      "The package record belongs to a process, and only the one named \"hmi\" examines sticks: in any other process,\n"
      "this tool included, it is empty. \"hlxctl update check\" examines a package without a unit.";
  return area;
}
