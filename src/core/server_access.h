// Requests to the server pages, their replies, the probes, and the allotment of a web engine.
#pragma once

#include <string>
#include <string_view>

#include "protocol/form.h"

struct Program;

/// Begins every request body.
inline constexpr std::string_view kAccessKey = "key=zorbelquinter";

/// Text of a reply in CP950. Throws RunTimeError for a lead byte at the very end.
std::string BytesToText(std::string_view responseBody);
/// Posts a form body (UTF-8) and gives the decoded reply, whatever the status. Throws RunTimeError when no
/// reply came or it cannot be decoded.
std::string PostForm(Program& program, const std::string& url, const std::string& body);
/// The same with the fields of a body. Gives `refusal::kConnectFailed` instead of throwing.
std::string TryPost(Program& program, const std::string& url, protocol::Fields fields);
/// The same at a page of gServerUrlRoot, once a probe has found the server.
std::string AskServer(Program& program, const char* page, protocol::Fields fields = {});

/// Probes gServerUrlRoot, and takes the server's date into gServerDate.
bool IsServerOnline(Program& program);
/// Probes gWebEngineRoot, after allotting one when asked to.
bool IsWebEngineOnline(Program& program, bool allocate);
/// Asks for an engine's root; "" when none is given. Throws RunTimeError for a failed transfer.
std::string GetWebEngineAddress(Program& program, const std::string& publisherRoot);
/// Returns when gWebEngineRoot answers, or ends the program when the user gives up.
void AllocateWebEngine(Program& program);
/// Has the browser window post a packed page to the server, whose answer it then shows.
void PostDecodeForm(Program& program, const std::string& code);
