// Fuzz target over the bytes of the CAN box, under each protocol. An input is a protocol and pairs of an event and its
// two bytes; whatever they are, listeners hear words and numbers that the catalogue can tell.
#include <iterator>

#include "catalog/EveryEvent.h"
#include "client/ipc/ClientIpcAdapter.h"
#include "client/misc/HLXMiscClient.h"
#include "tests/fuzz/Input.h"
#include "tests/support/FakePlatform.h"

namespace {

using Group = SystemMisc::AC_State_Data;
using Decoder = void (*)(HLXMiscClient& misc, unsigned char one, unsigned char two);

constexpr const char* kProtocols[] = {"",         "raise",        "raise_gac",  "raise_renault",
                                      "raise_vw", "raise_toyota", "raise_ford", "unknown"};
constexpr Decoder kDecoders[] = {
    [](HLXMiscClient& misc, unsigned char one, unsigned char) { misc.OnDoorStateChange(one); },
    [](HLXMiscClient& misc, unsigned char one, unsigned char two) { misc.OnKeyStateChange(one, two); },
    [](HLXMiscClient& misc, unsigned char one, unsigned char two) { misc.OnRaiseVWSteeringWheelAngelChange(one, two); },
    [](HLXMiscClient& misc, unsigned char one, unsigned char two) { misc.OnTotalMileChange_Raise(one << 24 | two); },
    [](HLXMiscClient& misc, unsigned char one, unsigned char two) {
      misc.OnEnduranceMileChange_Raise(one << 24 | two);
    },
    [](HLXMiscClient& misc, unsigned char one, unsigned char) { misc.OnAcStateChange(one); },
    [](HLXMiscClient& misc, unsigned char one, unsigned char two) { misc.OnRaiseGacAcStateChange(one, two); },
    [](HLXMiscClient& misc, unsigned char one, unsigned char) { misc.OnSimpleAirModeChange(one); },
    [](HLXMiscClient& misc, unsigned char one, unsigned char two) {
      misc.OnGeneralAcStateChange(static_cast<Group>(one), two);
    },
    [](HLXMiscClient& misc, unsigned char one, unsigned char two) {
      misc.OnToyotaAcStateChange(static_cast<Group>(one), two);
    },
    [](HLXMiscClient& misc, unsigned char one, unsigned char two) {
      misc.OnFordAcStateChange(static_cast<Group>(one), two);
    },
};

/// Every event can be told in words.
void Tell(const catalog::Event& event) {
  Require(*event.callback != '\0');
  for (const catalog::EventArgument& argument : event.arguments) {
    Require(!argument.name.empty() && !catalog::WithUnit(argument.reading, argument.scalar).empty());
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, std::size_t size) {
  static HLXMiscClient misc(std::make_shared<ClientIpcAdapter>());
  static catalog::EveryEvent listener(Tell);
  static const bool listening = (misc.AddListener(&listener), true);
  Require(listening);
  Input input(data, size);
  fake::Get().config["/system/using_can_protocol"] = kProtocols[input.Byte() % std::size(kProtocols)];
  while (!input.Empty()) {
    const Decoder decode = kDecoders[input.Byte() % std::size(kDecoders)];
    const unsigned char one = input.Byte();
    decode(misc, one, input.Byte());
    fake::Get().log.clear();
    fake::Get().config_reads.clear();
  }
  return 0;
}
