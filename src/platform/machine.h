// The machine that a program runs on, as one bundle of replaceable parts.
#pragma once

namespace base {
class Databases;
class Files;
}  // namespace base

namespace marovane {

class ChineseConverter;
class Desktop;
struct Environment;
class EventLoop;
class HttpClient;
class Processes;
class WindowSystem;

struct Machine {
  EventLoop& loop;
  WindowSystem& windows;
  Desktop& desktop;
  HttpClient& http;
  base::Files& files;
  base::Databases& databases;
  Processes& processes;
  const ChineseConverter& chinese;
  const Environment& environment;
};

}  // namespace marovane
