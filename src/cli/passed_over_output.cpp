#include "cli/passed_over_output.h"

#include "app/passed_over.h"
#include "cli/json_writer.h"

void writePassedOver(JsonWriter *json)
{
    json->key("passedOver").beginArray();
    for (const PassedOverFile &file : passedOver.files()) {
        json->beginObject();
        json->key("path").value(file.path);
        json->key("reason").value(QString::fromLatin1(nameOf(file.reason)));
        json->endObject();
    }
    // One row for all that were not kept, with the reason that most of them have.
    qint64 rest = 0;
    auto most = PassedOverReason::Unreadable;
    for (int i = 0; i < passedOverReasons; ++i) {
        const auto reason = static_cast<PassedOverReason>(i);
        rest += passedOver.beyond(reason);
        most = passedOver.beyond(reason) > passedOver.beyond(most) ? reason : most;
    }
    if (rest > 0) {
        json->beginObject();
        json->key("path").null();
        json->key("reason").value(QString::fromLatin1(nameOf(most)));
        json->key("messages").value(rest);
        json->endObject();
    }
    json->endArray();
    json->key("otherFiles").value(passedOver.otherFiles());
}
