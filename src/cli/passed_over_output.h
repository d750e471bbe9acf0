#pragma once

class JsonWriter;

/// Writes the members "passedOver" and "otherFiles" of the last scan into the object that is open.
void writePassedOver(JsonWriter *json);
