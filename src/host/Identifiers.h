#pragma once
// Identifiers of the events, interfaces and services that host and component exchange.

#include "platform/base/Guid.h"

namespace kvx::host {

// The component and the records it registers under.
inline constexpr GUID kComponent = MakeGuid("{229F9BBD-E203-4542-945D-B22C9A16B5F4}");
inline constexpr GUID kFrameworkOwner = MakeGuid("{FAEDDE08-6BAC-4DC9-A571-4EBC788E850C}");
inline constexpr GUID kSecondToolbarOwner = MakeGuid("{199947C1-7B7A-11D5-B0A1-00C04F689A0E}");

// Interfaces of the component object.
inline constexpr GUID kRegistryClient = MakeGuid("{A8495740-DE13-11D3-8AF5-00AA0026624A}");
inline constexpr GUID kComponentInterface = MakeGuid("{A8495747-DE13-11D3-8AF5-00AA0026624A}");
inline constexpr GUID kErrorReporter = MakeGuid("{4BCBB0D1-1757-4741-9D84-D12924DC408B}");

// Interfaces that the component advises to the host or offers as a service.
inline constexpr GUID kSteppingClient = MakeGuid("{F34E8D5C-3FC5-4EAF-8BB7-7C0C37D5AAA0}");
inline constexpr GUID kWorkSpaceClient = MakeGuid("{56836F34-D734-11D4-BE83-00C04F794B59}");
inline constexpr GUID kWorkSpaceClient2 = MakeGuid("{453547D2-008B-44A3-BDF4-48B86CBCFB44}");
inline constexpr GUID kFormatViewClient = MakeGuid("{F4B80273-DE68-4433-B25A-774FB15B2676}");
inline constexpr GUID kCommandSink = MakeGuid("{05E4387F-B032-464F-A0C1-B9CCB3B51054}");
inline constexpr GUID kOSTraceWindow = MakeGuid("{717072F5-95E2-4223-8573-D9F63F1A87D0}");

// Events (IQComponent::Notify, IQHost::BroadcastEvent).
inline constexpr GUID kEventDebuggerConnected = MakeGuid("{2289D12E-1242-11D5-9690-00B0D0167C2F}");
inline constexpr GUID kEventDebuggerDisconnected =
    MakeGuid("{2289D130-1242-11D5-9690-00B0D0167C2F}");
inline constexpr GUID kEventTargetConnected = MakeGuid("{FBA45A0C-D6E6-4F93-AB42-F7B6132C54AD}");
inline constexpr GUID kEventTargetDisconnected = MakeGuid("{C66E2FA6-0158-4034-A0D8-22D069587D43}");
inline constexpr GUID kEventTraceReady = MakeGuid("{C5C1CBAC-7AFA-4569-A9F6-D34A78471B74}");
inline constexpr GUID kEventTraceCleared = MakeGuid("{F626792D-7378-42DA-9645-34B0AE362E6A}");
inline constexpr GUID kEventDisplayChanged = MakeGuid("{650559B1-CC9E-488D-8FB0-409B291199CF}");

// Services of the host.
inline constexpr GUID kOSTraceService = MakeGuid("{68A9B7A2-46BD-421A-8A10-2DBD7B54B7DC}");
inline constexpr GUID kOSTraceAvailability = MakeGuid("{E98BB808-BFF3-42D1-AF5C-0454164978DB}");
inline constexpr GUID kRunState = MakeGuid("{160415CE-14A7-11D6-80FC-00C04F68EAD7}");
inline constexpr GUID kDebuggerLibrary = MakeGuid("{D52AD687-2196-4D88-B911-DA73B50E3932}");
inline constexpr GUID kDebuggerCalls = MakeGuid("{D52AD687-2196-4D88-B911-DA73B50E3831}");
inline constexpr GUID kErrorService = MakeGuid("{90EFE761-0B7C-11D6-8BC2-0004E2013C71}");
inline constexpr GUID kPropertyStore = MakeGuid("{374027C8-E512-4DB2-8531-38B08B323CF9}");
inline constexpr GUID kWorkspaceStore = MakeGuid("{0C6ED387-4E53-4FE4-B2C5-6D82B38A4046}");
inline constexpr GUID kProjectInformation = MakeGuid("{A538CBA2-D5B7-11D4-BE81-00C04F794B59}");
inline constexpr GUID kCustomPlaceholders = MakeGuid("{8403CE5C-6C18-4EF5-89DB-F9E6205C0A3A}");
inline constexpr GUID kNamingService = MakeGuid("{D2D08F5A-4600-4590-B4C0-0695720D9AE5}");
inline constexpr GUID kOpenBlockerA = MakeGuid("{064FDC28-33A8-43A9-99FA-DA5F989C2061}");
inline constexpr GUID kOpenBlockerB = MakeGuid("{4703654E-357A-480B-90EA-34E69968FFD8}");

// Services that the framework layers fetch and keep; the component calls none of their operations.
inline constexpr GUID kHostFrame = MakeGuid("{BEAF1680-E31D-11D5-80EE-00C04F68EAD7}");
inline constexpr GUID kFrameworkA = MakeGuid("{A8495752-DE13-11D3-8AF5-00AA0026624A}");
inline constexpr GUID kFrameworkB = MakeGuid("{A8495743-DE13-11D3-8AF5-00AA0026624A}");
inline constexpr GUID kFrameworkC = MakeGuid("{A8495753-DE13-11D3-8AF5-00AA0026624A}");
inline constexpr GUID kDebugB = MakeGuid("{914F4C74-D760-11D4-940A-00C04F68EB57}");
inline constexpr GUID kDebugC = MakeGuid("{A849574A-DE13-11D3-8AF5-00AA0026624A}");
inline constexpr GUID kDebugD = MakeGuid("{C6CB7C2E-01BD-11D5-80BD-00C04F68EAD7}");
inline constexpr GUID kDebugE = MakeGuid("{BFA8B2C0-E306-11D4-8BBC-444553540000}");
inline constexpr GUID kDebugF = MakeGuid("{EF5378F6-C12B-4BF6-9181-DB4BC8F0F54A}");
inline constexpr GUID kDebugG = MakeGuid("{52E19F40-C937-11D5-8BC1-0004E2013C71}");
inline constexpr GUID kDebugH = MakeGuid("{A2E8A611-CC1E-4173-985E-E38024BD0EC1}");

// Ours: docking windows, menus and toolbars of the host.
inline constexpr GUID kDockingHost = MakeGuid("{3B0E8C52-7D41-4B0A-9C35-52A1C6E0F4D7}");
// Ours: what registrations say beyond that, by query-interface from the docking host.
inline constexpr GUID kDockingRegistrations = MakeGuid("{C1F7A6D4-2B93-4E58-8D0C-6E35B9A47F12}");
// Ours: bulk access to the decoded events, by query-interface from the OS-trace service.
inline constexpr GUID kOSTraceColumns = MakeGuid("{9D5B1E3A-60C4-4F0D-8E2B-1C7A90F3B6E8}");

}  // namespace kvx::host
