#pragma once

#include <ApplicationServices/ApplicationServices.h>

#ifdef __cplusplus
extern "C" {
#endif

typedef struct OpaqueEventRef* EventRef;
typedef struct OpaqueEventHandlerRef* EventHandlerRef;
typedef struct OpaqueEventHandlerCallRef* EventHandlerCallRef;
typedef struct OpaqueEventTargetRef* EventTargetRef;
typedef struct OpaqueEventHotKeyRef* EventHotKeyRef;
typedef OSType EventParamName;
typedef OSType EventParamType;
typedef UInt32 OptionBits;
typedef unsigned long ItemCount;
typedef unsigned long ByteCount;
typedef OSStatus (*EventHandlerProcPtr)(EventHandlerCallRef caller, EventRef event, void* userData);
typedef EventHandlerProcPtr EventHandlerUPP;

typedef struct EventTypeSpec {
  OSType eventClass;
  UInt32 eventKind;
} EventTypeSpec;

typedef struct EventHotKeyID {
  OSType signature;
  UInt32 id;
} EventHotKeyID;

enum { kEventClassKeyboard = 'keyb' };
enum { kEventHotKeyPressed = 5 };
enum { kEventParamDirectObject = '----' };
enum { typeEventHotKeyID = 'hkid' };
enum { kEventHotKeyNoOptions = 0 };
enum { kCoreEventClass = 'aevt', kAEReopenApplication = 'rapp' };

EventTargetRef GetApplicationEventTarget(void);
OSStatus InstallEventHandler(EventTargetRef target, EventHandlerUPP handler, ItemCount typeCount,
                             const EventTypeSpec* types, void* userData, EventHandlerRef* installed);
OSStatus RemoveEventHandler(EventHandlerRef handler);
OSStatus GetEventParameter(EventRef event, EventParamName name, EventParamType desiredType,
                           EventParamType* actualType, ByteCount bufferSize, ByteCount* actualSize,
                           void* data);
OSStatus RegisterEventHotKey(UInt32 keyCode, UInt32 modifiers, EventHotKeyID id, EventTargetRef target,
                             OptionBits options, EventHotKeyRef* registered);
OSStatus UnregisterEventHotKey(EventHotKeyRef hotKey);

#ifdef __cplusplus
}
#endif
