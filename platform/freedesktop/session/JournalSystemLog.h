#pragma once

#include <string>
#include <string_view>

#include "platform/System.h"

namespace platform::freedesktop {

// The systemd journal, with the category and the subsystem as fields of their own; syslog(3) where there is
// no journal. A journal that does not keep up loses entries rather than hold up the program.
class JournalSystemLog final : public SystemLog {
  public:
    explicit JournalSystemLog(std::string journalSocket = "/run/systemd/journal/socket");
    ~JournalSystemLog() override;
    JournalSystemLog(const JournalSystemLog&) = delete;
    JournalSystemLog& operator=(const JournalSystemLog&) = delete;

    void write(std::string_view category, std::string_view message) override;
    void writeGeneral(std::string_view message) override;

  private:
    bool sendToJournal(const std::string& entry);

    std::string journalSocket_;
    int socket_;
};

}  // namespace platform::freedesktop
