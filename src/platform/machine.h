// The machine that a program runs on, as one bundle of replaceable parts.
#pragma once

class ChineseConverter;
class Databases;
class Desktop;
struct Environment;
class EventLoop;
class Files;
class HttpClient;
class Processes;
class WindowSystem;

struct Machine {
  EventLoop& loop;
  WindowSystem& windows;
  Desktop& desktop;
  HttpClient& http;
  Files& files;
  Databases& databases;
  Processes& processes;
  const ChineseConverter& chinese;
  const Environment& environment;
};
