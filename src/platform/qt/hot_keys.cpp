#include "platform/hot_keys.h"

#include "base/log.h"
#include "platform/qt/key_server.h"
#include "platform/qt/window_qt.h"

namespace kalmora {

HotKeyResult RegisterHotKey(Window& target, int id, const KeyCombination& combination) {
    return qt::KeyServer::Instance().Register(static_cast<qt::QtWindow&>(target).GetLink(), id, combination);
}

void UnregisterHotKey(int id) { qt::KeyServer::Instance().Unregister(id); }

bool SendKey(int key, KeyMotion motion) { return qt::KeyServer::Instance().Send(key, motion); }

}  // namespace kalmora
