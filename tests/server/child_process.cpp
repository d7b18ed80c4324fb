#include "tests/server/child_process.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <stdexcept>

namespace {

constexpr int kPatience = 30000;  // milliseconds

/// Pipe ends that no other child inherits.
std::array<int, 2> MakePipe() {
  std::array<int, 2> ends{};
  if (pipe2(ends.data(), O_CLOEXEC) != 0) throw std::runtime_error("no pipe");
  return ends;
}

[[noreturn]] void Execute(const std::vector<std::string>& words) {
  std::vector<char*> arguments;
  std::string program = SERVER_PROGRAM;
  arguments.push_back(program.data());
  for (const std::string& word : words) arguments.push_back(const_cast<char*>(word.c_str()));
  arguments.push_back(nullptr);
  execv(SERVER_PROGRAM, arguments.data());
  _exit(127);
}

/// Reads up to a byte, or to the end of the stream. False when nothing came for too long.
bool ReadUntil(int stream, char last, std::string& text) {
  pollfd source = {stream, POLLIN, 0};
  while (poll(&source, 1, kPatience) > 0) {
    char sign = 0;
    if (read(stream, &sign, 1) <= 0) return true;
    if (sign == last) return true;
    text += sign;
  }
  return false;
}

}  // namespace

ChildServer::ChildServer(const std::vector<std::string>& words, bool underParent) {
  const auto in = MakePipe();
  const auto out = MakePipe();
  const auto err = MakePipe();
  started_ = fork();
  if (started_ == 0) {
    dup2(in[0], STDIN_FILENO);
    dup2(out[1], STDOUT_FILENO);
    dup2(err[1], STDERR_FILENO);
    if (!underParent || fork() == 0) Execute(words);
    close(STDOUT_FILENO);
    close(out[1]);
    while (true) pause();
  }
  for (const int end : {in[0], out[1], err[1]}) close(end);
  input_ = in[1];
  output_ = out[0];
  errors_ = err[0];
}

ChildServer::~ChildServer() {
  CloseInput();
  if (started_ > 0) {
    kill(started_, SIGKILL);
    waitpid(started_, nullptr, 0);
  }
  close(output_);
  close(errors_);
}

std::string ChildServer::Root() {
  std::string line;
  const bool read = ReadUntil(output_, '\n', line);
  return read && line.starts_with("root=") ? line.substr(5) : "";
}

void ChildServer::Signal(int signal) const { kill(started_, signal); }

void ChildServer::Write(const std::string& text) const {
  std::signal(SIGPIPE, SIG_IGN);
  if (write(input_, text.data(), text.size()) < 0 && errno != EPIPE) throw std::runtime_error("cannot write");
}

void ChildServer::CloseInput() {
  if (input_ >= 0) close(input_);
  input_ = -1;
}

bool ChildServer::HasEnded() {
  std::string rest;
  return ReadUntil(output_, '\0', rest);
}

int ChildServer::ExitStatus() {
  int status = 0;
  waitpid(started_, &status, 0);
  started_ = -1;
  return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

std::string ChildServer::Output() {
  std::string text;
  ReadUntil(output_, '\0', text);
  return text;
}

std::string ChildServer::Errors() {
  std::string text;
  ReadUntil(errors_, '\0', text);
  return text;
}
