// Requests to the server pages, their replies, the probes, and the allotment of a web engine.
#pragma once

#include <string>

#include "protocol/form.h"

namespace marovane {

struct Program;

/// Posts a form body (UTF-8) and gives the decoded reply, whatever the status. Throws RunTimeError when no
/// reply came or it cannot be decoded.
std::string PostForm(Program& program, const std::string& url, const std::string& body);
/// The same with the fields of a body. Gives `refusal::kConnectFailed` instead of throwing.
std::string TryPost(Program& program, const std::string& url, protocol::Fields fields);
/// The same at a page of gServerUrlRoot, once a probe has found the server.
std::string AskServer(Program& program, const char* page, protocol::Fields fields = {});

/// Probes gServerUrlRoot, and takes the server's date into gServerDate.
bool IsServerOnline(Program& program);
/// Probes gWebEngineRoot.
bool IsWebEngineOnline(Program& program);
/// Asks for an engine's root; "" when none is given. Throws RunTimeError for a failed transfer.
std::string GetWebEngineAddress(Program& program, const std::string& publisherRoot);
/// Asks for an engine's root into gWebEngineRoot, and whether the engine answers. Throws RunTimeError for a
/// failed transfer of the first request.
bool TryWebEngine(Program& program);
/// Attempts of an allotment.
inline constexpr int kEngineAttempts = 10;
/// Makes so many attempts, one straight after the other. False when none of them brought an engine that
/// answers. Throws RunTimeError as TryWebEngine does.
bool AllocateWebEngine(Program& program);
/// Has the browser window post a packed page to the server, whose answer it then shows.
void PostDecodeForm(Program& program, const std::string& code);

}  // namespace marovane
