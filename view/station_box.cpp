#include "view/station_box.h"

#include "realtime/stations.h"

namespace galeris {

void ShowStations(Workspace& ws, Canvas& canvas, int airway, float midX, float midY, float size,
                  float lineStep) {
  if (!ws.remote.RemoteRunning) return;
  float top = midY;
  for (const StationLine& line : ShowStationOf(ws, airway)) {
    top += lineStep;
    const Colour colour = line.alarm < 0   ? kLowAlarmColour
                          : line.alarm > 0 ? kHighAlarmColour
                                           : RGBColour(255, 255, 255);
    canvas.Text(midX, top, line.text, colour, size);
  }
}

}  // namespace galeris
