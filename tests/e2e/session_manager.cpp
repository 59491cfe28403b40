// A session manager (X Session Management Protocol): prints its address, its clients' hints about being
// restarted whenever they are given, and ends the session when a line comes on the standard input.
#include <X11/SM/SMlib.h>
#include <poll.h>
#include <unistd.h>

#include <array>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <vector>

namespace {

struct Session {
  std::vector<IceConn> wires;
  std::vector<SmsConn> clients;
  bool ending = false;
};

Session& sessionOf(SmPointer data) {
  return *static_cast<Session*>(data);
}

int acceptAnybody(char*) {
  return True;
}

int registerClient(SmsConn client, SmPointer, char* previous) {
  std::free(previous);
  char* const id = SmsGenerateClientID(client);
  SmsRegisterClientReply(client, id);
  std::free(id);
  SmsSaveYourself(client, SmSaveLocal, False, SmInteractStyleNone, False);
  return True;
}

void saved(SmsConn client, SmPointer data, int) {
  if (sessionOf(data).ending)
    SmsDie(client);
  else
    SmsSaveComplete(client);
}

void readProperties(SmsConn, SmPointer, int count, SmProp** properties) {
  for (int i = 0; i < count; ++i) {
    if (std::strcmp(properties[i]->name, SmRestartStyleHint) == 0) {
      std::printf("restart %d\n", *static_cast<unsigned char*>(properties[i]->vals[0].value));
      std::fflush(stdout);
    }
    SmFreeProperty(properties[i]);
  }
  std::free(properties);
}

void leave(SmsConn client, SmPointer data, int count, char** reasons) {
  SmFreeReasons(count, reasons);
  Session& session = sessionOf(data);
  const IceConn wire = SmsGetIceConnection(client);
  std::erase(session.clients, client);
  std::erase(session.wires, wire);
  SmsCleanUp(client);
  IceSetShutdownNegotiation(wire, False);
  IceCloseConnection(wire);
}

int admit(SmsConn client, SmPointer data, unsigned long* mask, SmsCallbacks* callbacks, char**) {
  sessionOf(data).clients.push_back(client);
  *mask = SmsRegisterClientProcMask | SmsInteractRequestProcMask | SmsInteractDoneProcMask |
          SmsSaveYourselfRequestProcMask | SmsSaveYourselfP2RequestProcMask | SmsSaveYourselfDoneProcMask |
          SmsCloseConnectionProcMask | SmsSetPropertiesProcMask | SmsDeletePropertiesProcMask |
          SmsGetPropertiesProcMask;
  callbacks->register_client = {registerClient, data};
  callbacks->interact_request = {[](SmsConn asking, SmPointer, int) { SmsInteract(asking); }, data};
  callbacks->interact_done = {[](SmsConn, SmPointer, Bool) {}, data};
  callbacks->save_yourself_request = {[](SmsConn, SmPointer, int, Bool, int, Bool, Bool) {}, data};
  callbacks->save_yourself_phase2_request = {[](SmsConn asking, SmPointer) { SmsSaveYourselfPhase2(asking); },
                                             data};
  callbacks->save_yourself_done = {saved, data};
  callbacks->close_connection = {leave, data};
  callbacks->set_properties = {readProperties, data};
  callbacks->delete_properties = {[](SmsConn, SmPointer, int, char**) {}, data};
  callbacks->get_properties = {[](SmsConn asking, SmPointer) { SmsReturnProperties(asking, 0, nullptr); },
                               data};
  return True;
}

}  // namespace

int main() {
  Session session;
  std::array<char, 256> error{};
  int count = 0;
  IceListenObj* listeners = nullptr;
  if (!SmsInitialize("test", "1", admit, &session, acceptAnybody, error.size(), error.data()) ||
      !IceListenForConnections(&count, &listeners, error.size(), error.data()))
    return 1;
  for (int i = 0; i < count; ++i)
    IceSetHostBasedAuthProc(listeners[i], acceptAnybody);
  char* const address = IceComposeNetworkIdList(count, listeners);
  std::printf("%s\n", address);
  std::fflush(stdout);
  std::free(address);
  for (;;) {
    std::vector<pollfd> watched{{STDIN_FILENO, POLLIN, 0}};
    for (int i = 0; i < count; ++i)
      watched.push_back({IceGetListenConnectionNumber(listeners[i]), POLLIN, 0});
    const std::vector<IceConn> wires = session.wires;
    for (const IceConn wire : wires)
      watched.push_back({IceConnectionNumber(wire), POLLIN, 0});
    if (poll(watched.data(), watched.size(), -1) < 0) return 1;
    if (watched[0].revents) {
      char line = 0;
      if (read(STDIN_FILENO, &line, 1) <= 0) break;
      session.ending = true;
      for (const SmsConn client : session.clients)
        SmsSaveYourself(client, SmSaveLocal, True, SmInteractStyleAny, False);
    }
    for (int i = 0; i < count; ++i) {
      if (!watched[static_cast<std::size_t>(i) + 1].revents) continue;
      IceAcceptStatus status = IceAcceptFailure;
      const IceConn incoming = IceAcceptConnection(listeners[i], &status);
      while (incoming && IceConnectionStatus(incoming) == IceConnectPending)
        IceProcessMessages(incoming, nullptr, nullptr);
      if (incoming) session.wires.push_back(incoming);
    }
    for (std::size_t i = 0; i < wires.size(); ++i) {
      const bool heard = watched[static_cast<std::size_t>(count) + 1 + i].revents != 0;
      if (heard && IceProcessMessages(wires[i], nullptr, nullptr) == IceProcessMessagesIOError)
        std::erase(session.wires, wires[i]);
    }
  }
  IceFreeListenObjs(count, listeners);
  return 0;
}
