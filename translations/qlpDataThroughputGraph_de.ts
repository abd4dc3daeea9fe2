<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de" sourcelanguage="en">
<context>
    <name>AreaPager</name>
    <message>
        <source>Plot areas</source>
        <translation>Graphen</translation>
    </message>
</context>
<context>
    <name>CxCameraLineData</name>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>Exporting %1 data</source>
        <translation>Daten von %1 werden exportiert</translation>
    </message>
    <message>
        <source>Data throughput monitor</source>
        <translation>Datendurchsatz</translation>
    </message>
</context>
<context>
    <name>CxDataGraphForm</name>
    <message>
        <source>Data Throughput Graph</source>
        <translation>Datendurchsatz</translation>
    </message>
    <message>
        <source>Setup...</source>
        <translation>Einrichten...</translation>
    </message>
    <message>
        <source>Start All</source>
        <translation>Alle starten</translation>
    </message>
    <message>
        <source>Reset Zoom</source>
        <translation>Zoom zurücksetzen</translation>
    </message>
    <message>
        <source>Reset Pan</source>
        <translation>Lage zurücksetzen</translation>
    </message>
    <message>
        <source>Live Graph</source>
        <translation>Live-Graph</translation>
    </message>
    <message>
        <source>Refresh</source>
        <translation>Auffrischen</translation>
    </message>
    <message>
        <source>Export Graph</source>
        <translation>Graph exportieren</translation>
    </message>
    <message>
        <source>Enable or disable plot:</source>
        <translation>Kurven zeigen:</translation>
    </message>
    <message>
        <source>Export Data...</source>
        <translation>Exportieren...</translation>
    </message>
    <message>
        <source>Stop</source>
        <translation>Stopp</translation>
    </message>
    <message>
        <source>Start</source>
        <translation>Start</translation>
    </message>
    <message>
        <source>Acq</source>
        <translation>Aufn.</translation>
    </message>
    <message>
        <source>Testing</source>
        <translation>Misst</translation>
    </message>
    <message>
        <source>Stopped</source>
        <translation>Gestoppt</translation>
    </message>
    <message>
        <source>Testing: this tool measures the camera. Acq: the viewer itself acquires from it.</source>
        <translation>Misst: dieses Werkzeug misst die Kamera. Aufn.: der Betrachter selbst nimmt mit ihr auf.</translation>
    </message>
    <message>
        <source>Mean of the frames&apos; throughputs, all frames weighing the same. A frame&apos;s throughput: its bytes by the time from its first to its last block.</source>
        <translation>Mittelwert der Durchsätze der Bilder, alle Bilder mit gleichem Gewicht. Durchsatz eines Bilds: seine Bytes durch die Zeit von seinem ersten bis zu seinem letzten Block.</translation>
    </message>
    <message>
        <source>The slowest block of all frames: sample period by the time between two blocks.</source>
        <translation>Der langsamste Block aller Bilder: Abtastperiode durch die Zeit zwischen zwei Blöcken.</translation>
    </message>
    <message>
        <source>Highest level of the camera&apos;s buffer, simulated: it is filled at the required throughput, emptied at the link&apos;s, and empty when a frame begins.</source>
        <translation>Höchster Füllstand des Kamerapuffers, simuliert: er wird mit dem geforderten Durchsatz gefüllt, mit dem der Verbindung geleert und ist am Anfang eines Bilds leer.</translation>
    </message>
    <message>
        <source>Frames in which the simulated buffer of the camera was full.</source>
        <translation>Bilder, in denen der simulierte Puffer der Kamera voll war.</translation>
    </message>
    <message>
        <source>As the camera tells, in kB of 1000 bytes; 32768 bytes are assumed if it does not.</source>
        <translation>Nach Angabe der Kamera, in kB zu 1000 Bytes; ohne Angabe werden 32768 Bytes angenommen.</translation>
    </message>
    <message>
        <source>Frames that reached the viewer.</source>
        <translation>Bilder, die den Betrachter erreicht haben.</translation>
    </message>
    <message>
        <source>Frames lost on the link.</source>
        <translation>Bilder, die auf der Verbindung verloren gingen.</translation>
    </message>
    <message>
        <source>Frames dropped as they were fetched too late.</source>
        <translation>Bilder, die entfielen, weil sie zu spät abgeholt wurden.</translation>
    </message>
    <message>
        <source>Triggers that came while the sensor was busy.</source>
        <translation>Trigger, die kamen, während der Sensor beschäftigt war.</translation>
    </message>
    <message>
        <source>Triggers that found the frame buffer full.</source>
        <translation>Trigger, bei denen der Bildpuffer voll war.</translation>
    </message>
    <message>
        <source>Overflows of the frame buffer.</source>
        <translation>Überläufe des Bildpuffers.</translation>
    </message>
    <message>
        <source>The camera&apos;s count at its last frame, whatever the graph shows.</source>
        <translation>Zählerstand der Kamera bei ihrem letzten Bild, gleich was der Graph zeigt.</translation>
    </message>
    <message>
        <source>Frames from %1 s to %2 s: the visible %3 s to %4 s and a margin of %5 s on either side.</source>
        <translation>Bilder von %1 s bis %2 s: die sichtbaren %3 s bis %4 s und ein Rand von %5 s auf jeder Seite.</translation>
    </message>
    <message>
        <source>no frame in this range</source>
        <translation>kein Bild in diesem Bereich</translation>
    </message>
    <message>
        <source>This measurement: %1 missing frames, longest time without a frame %2 s.</source>
        <translation>Diese Messung: %1 fehlende Bilder, längste Zeit ohne Bild %2 s.</translation>
    </message>
    <message>
        <source>The camera&apos;s clock is %1 ppm fast against this computer&apos;s.</source>
        <translation>Die Uhr der Kamera geht gegen die dieses Rechners um %1 ppm vor.</translation>
    </message>
    <message>
        <source>no frame for %1 s</source>
        <translation>seit %1 s kein Bild</translation>
    </message>
    <message>
        <source>Camera</source>
        <translation>Kamera</translation>
    </message>
    <message>
        <source>Status</source>
        <translation>Status</translation>
    </message>
    <message>
        <source>Data gap measurement status</source>
        <translation>Status der Messung der Datenlücken</translation>
    </message>
    <message>
        <source>Data Format</source>
        <translation>Datenformat</translation>
    </message>
    <message>
        <source>Output data format.</source>
        <translation>Format der Ausgabedaten.</translation>
    </message>
    <message>
        <source>Measure</source>
        <translation>Messen</translation>
    </message>
    <message>
        <source>Start/Stop Measurement</source>
        <translation>Messung starten/stoppen</translation>
    </message>
    <message>
        <source>Transferred</source>
        <translation>Übertragen</translation>
    </message>
    <message>
        <source>Number of transferred frames</source>
        <translation>Anzahl der übertragenen Bilder</translation>
    </message>
    <message>
        <source>Transport skip</source>
        <translation>Verlust Transport</translation>
    </message>
    <message>
        <source>Number of skipped frames on transport layer</source>
        <translation>Anzahl der in der Transportschicht übersprungenen Bilder</translation>
    </message>
    <message>
        <source>API skip</source>
        <translation>Verlust API</translation>
    </message>
    <message>
        <source>Number of skipped frames on API layer</source>
        <translation>Anzahl der in der API-Schicht übersprungenen Bilder</translation>
    </message>
    <message>
        <source>Missed trg. overlap</source>
        <translation>Trigger verpasst: Überlappung</translation>
    </message>
    <message>
        <source>Number of missed triggers due to overlap</source>
        <translation>Anzahl der wegen Überlappung verpassten Trigger</translation>
    </message>
    <message>
        <source>Missed trg overflow</source>
        <translation>Trigger verpasst: Puffer voll</translation>
    </message>
    <message>
        <source>Number of missed triggers due to frame buffer full</source>
        <translation>Anzahl der wegen vollen Bildpuffers verpassten Trigger</translation>
    </message>
    <message>
        <source>Buffer overflow</source>
        <translation>Pufferüberlauf</translation>
    </message>
    <message>
        <source>Frame buffer full counter</source>
        <translation>Zähler für vollen Bildpuffer</translation>
    </message>
    <message>
        <source>Graph</source>
        <translation>Graph</translation>
    </message>
    <message>
        <source>Enable/Disable plotting of measured data</source>
        <translation>Zeichnen der Messdaten ein-/ausschalten</translation>
    </message>
    <message>
        <source>Avg throughput</source>
        <translation>Mittlerer Durchsatz</translation>
    </message>
    <message>
        <source>Average data rate</source>
        <translation>Mittlere Datenrate</translation>
    </message>
    <message>
        <source>Min throughput</source>
        <translation>Kleinster Durchsatz</translation>
    </message>
    <message>
        <source>Minimum data rate in whole data set</source>
        <translation>Kleinste Datenrate aller Daten</translation>
    </message>
    <message>
        <source>Max buffer level</source>
        <translation>Max. Puffer</translation>
    </message>
    <message>
        <source>Internal camera buffer fill percentage</source>
        <translation>Füllstand des internen Kamerapuffers in Prozent</translation>
    </message>
    <message>
        <source>Buffer overflow count</source>
        <translation>Pufferüberläufe</translation>
    </message>
    <message>
        <source>Number of times internal camera buffer was totally filled</source>
        <translation>Wie oft der interne Kamerapuffer ganz voll war</translation>
    </message>
    <message>
        <source>Export data</source>
        <translation>Export</translation>
    </message>
    <message>
        <source>Export data to .csv report</source>
        <translation>Daten in einen .csv-Bericht exportieren</translation>
    </message>
    <message>
        <source>Required throughput</source>
        <translation>Geforderter Durchsatz</translation>
    </message>
    <message>
        <source>Expected sensor speed for evaluation</source>
        <translation>Für die Auswertung erwartete Geschwindigkeit des Sensors</translation>
    </message>
    <message>
        <source>Camera buffer size</source>
        <translation>Kamerapuffer</translation>
    </message>
    <message>
        <source>Size of internal camera buffer in bytes</source>
        <translation>Größe des internen Kamerapuffers in Bytes</translation>
    </message>
    <message>
        <source>Y Axis scaling</source>
        <translation>Y-Achse</translation>
    </message>
    <message>
        <source>Enable/Disable Y axis automatic scaling or set manual axis range</source>
        <translation>Automatische Skalierung der Y-Achse ein-/ausschalten oder Bereich von Hand setzen</translation>
    </message>
    <message>
        <source>Average
throughput</source>
        <translation>Mittlerer
Durchsatz</translation>
    </message>
    <message>
        <source>Minimum
throughput</source>
        <translation>Kleinster
Durchsatz</translation>
    </message>
    <message>
        <source>Buffer overflow
count</source>
        <translation>Puffer-
überläufe</translation>
    </message>
    <message>
        <source>Required
throughput</source>
        <translation>Geforderter
Durchsatz</translation>
    </message>
    <message>
        <source>Camera buffer
size</source>
        <translation>Kamera-
puffer</translation>
    </message>
    <message>
        <source>Select Output File</source>
        <translation>Ausgabedatei wählen</translation>
    </message>
    <message>
        <source>Export Measured Data</source>
        <translation>Messdaten exportieren</translation>
    </message>
    <message>
        <source>No measured data to export.</source>
        <translation>Es gibt keine Messdaten zum Exportieren.</translation>
    </message>
    <message>
        <source>Select Output File for Measured Data</source>
        <translation>Ausgabedatei für Messdaten wählen</translation>
    </message>
    <message>
        <source>CSV files (*.csv)</source>
        <translation>CSV files (*.csv)</translation>
    </message>
    <message>
        <source>The report is not complete.
%1: %2</source>
        <translation>Der Bericht ist nicht vollständig.
%1: %2</translation>
    </message>
    <message>
        <source>Stopping measurement</source>
        <translation>Messung wird gestoppt</translation>
    </message>
    <message>
        <source>Stopping camera %1...</source>
        <translation>Kamera %1 wird gestoppt...</translation>
    </message>
    <message>
        <source>Starting measurement</source>
        <translation>Messung wird gestartet</translation>
    </message>
    <message>
        <source>Starting camera %1...</source>
        <translation>Kamera %1 wird gestartet...</translation>
    </message>
    <message>
        <source>Stop All</source>
        <translation>Alle stoppen</translation>
    </message>
    <message>
        <source>Failed to start measurement</source>
        <translation>Messung konnte nicht gestartet werden</translation>
    </message>
    <message>
        <source>Camera %1 does not support 
 data throughput analysis in Kestrova.</source>
        <translation>Kamera %1 unterstützt 
 die Analyse des Datendurchsatzes in Kestrova nicht.</translation>
    </message>
    <message>
        <source>Counter value</source>
        <translation>Zählerstand</translation>
    </message>
    <message>
        <source>Avg. rate [MB/s]</source>
        <translation>Mittl. Rate [MB/s]</translation>
    </message>
    <message>
        <source>Buffer filled [%]</source>
        <translation>Pufferstand [%]</translation>
    </message>
    <message>
        <source>The data rate of the sensor in MB/s, against which the buffer is simulated. Checked: as the camera tells.</source>
        <translation>Die Datenrate des Sensors in MB/s, mit der der Puffer simuliert wird. Angekreuzt: nach Angabe der Kamera.</translation>
    </message>
    <message>
        <source>Start All, Stop All</source>
        <translation>Alle starten, alle anhalten</translation>
    </message>
    <message>
        <source>Zoom in</source>
        <translation>Vergrößern</translation>
    </message>
    <message>
        <source>Zoom out</source>
        <translation>Verkleinern</translation>
    </message>
    <message>
        <source>Earlier</source>
        <translation>Früher</translation>
    </message>
    <message>
        <source>Later</source>
        <translation>Später</translation>
    </message>
    <message>
        <source>One plot area up</source>
        <translation>Einen Graphen hinauf</translation>
    </message>
    <message>
        <source>One plot area down</source>
        <translation>Einen Graphen hinunter</translation>
    </message>
    <message>
        <source>First plot area alone, or all</source>
        <translation>Ersten Graphen allein oder alle</translation>
    </message>
    <message>
        <source>All plot areas</source>
        <translation>Alle Graphen</translation>
    </message>
    <message>
        <source>Show all graphs</source>
        <translation>Alle Graphen zeigen</translation>
    </message>
    <message>
        <source>Hide all graphs</source>
        <translation>Alle Graphen ausblenden</translation>
    </message>
    <message>
        <source>Save all plot areas...</source>
        <translation>Alle Graphen speichern...</translation>
    </message>
    <message>
        <source>%1 exists already. Replace it?</source>
        <translation>%1 gibt es schon. Ersetzen?</translation>
    </message>
    <message>
        <source>The image cannot be written.
%1: %2</source>
        <translation>Das Bild kann nicht geschrieben werden.
%1: %2</translation>
    </message>
    <message>
        <source>Previous plot areas</source>
        <translation>Vorige Graphen</translation>
    </message>
    <message>
        <source>Next plot areas</source>
        <translation>Nächste Graphen</translation>
    </message>
    <message>
        <source>The visible time range holds no measured data. Write a report without a line?</source>
        <translation>Im sichtbaren Zeitbereich liegen keine Messdaten. Bericht ohne Zeilen schreiben?</translation>
    </message>
    <message>
        <source>Time of day on the time axes</source>
        <translation>Uhrzeit an den Zeitachsen</translation>
    </message>
    <message>
        <source>Blocks of %1 bytes, the sample period: the shorter they are, the lower the minimum can be.</source>
        <translation>Blöcke von %1 Byte, die Abtastperiode: Je kürzer sie sind, desto niedriger kann das Minimum sein.</translation>
    </message>
    <message>
        <source>The ends of the value axis. Checked: they follow the curve, and are empty while its plot area is out of view.</source>
        <translation>Die Enden der Werteachse. Angekreuzt: Sie folgen der Kurve und sind leer, solange deren Diagramm nicht zu sehen ist.</translation>
    </message>
    <message>
        <source>This camera does not tell: %1 bytes are assumed.</source>
        <translation>Diese Kamera gibt nichts an: %1 Byte werden angenommen.</translation>
    </message>
</context>
<context>
    <name>CxDataGraphSetupDlg</name>
    <message>
        <source>Data Throughput Test Setup</source>
        <translation>Datendurchsatz einrichten</translation>
    </message>
    <message>
        <source>Measurement</source>
        <translation>Messung</translation>
    </message>
    <message>
        <source>million samples per camera</source>
        <translation>Millionen Abtastwerte je Kamera</translation>
    </message>
    <message>
        <source>Bytes</source>
        <translation>Bytes</translation>
    </message>
    <message>
        <source>Capacity:</source>
        <translation>Kapazität:</translation>
    </message>
    <message>
        <source>Sample period:</source>
        <translation>Abtastperiode:</translation>
    </message>
    <message>
        <source>Mode:</source>
        <translation>Modus:</translation>
    </message>
    <message>
        <source>Data Throughput measurement</source>
        <translation>Messung des Datendurchsatzes</translation>
    </message>
    <message>
        <source>Standard Sensor Acquisition</source>
        <translation>Gewöhnliche Sensoraufnahme</translation>
    </message>
    <message>
        <source>Display</source>
        <translation>Anzeige</translation>
    </message>
    <message>
        <source>Refresh Period:</source>
        <translation>Auffrischen alle:</translation>
    </message>
    <message>
        <source>seconds</source>
        <translation>Sekunden</translation>
    </message>
    <message>
        <source>%1: not known before its first measurement</source>
        <translation>%1: vor der ersten Messung nicht bekannt</translation>
    </message>
    <message>
        <source>%1: the last %2 at the present rate</source>
        <translation>%1: beim jetzigen Tempo die letzten %2</translation>
    </message>
    <message>
        <source>%1: the last %2 at the required throughput</source>
        <translation>%1: beim benötigten Durchsatz die letzten %2</translation>
    </message>
    <message>
        <source>Kept are the last %1 at the present rate: capacity %2 samples.</source>
        <translation>Behalten werden beim jetzigen Tempo die letzten %1: Kapazität %2 Abtastwerte.</translation>
    </message>
    <message>
        <source>Kept are the last %1 samples.</source>
        <translation>Behalten werden die letzten %1 Abtastwerte.</translation>
    </message>
    <message>
        <source>%1 samples take up to %2 of memory per camera, then the oldest are dropped.</source>
        <translation>%1 Abtastwerte brauchen bis zu %2 Speicher je Kamera, dann entfallen die ältesten.</translation>
    </message>
    <message>
        <source>and %1 other cameras</source>
        <translation>und %1 andere Kameras</translation>
    </message>
</context>
<context>
    <name>CxDataThroughputGraphPlugin</name>
    <message>
        <source>Data Throughput Graph Tool</source>
        <translation>Werkzeug für den Datendurchsatz</translation>
    </message>
    <message>
        <source>Measures the available bandwidth during time and shows results in graph.</source>
        <translation>Misst die verfügbare Bandbreite über die Zeit und zeigt die Ergebnisse als Graph.</translation>
    </message>
</context>
<context>
    <name>Diagnosis</name>
    <message>
        <source>The sensor asks for more than the link gives: it carries %1 MB/s on average, and %2 MB/s are required. A slower connection than meant, or a hub or switch on the way, may be the cause.</source>
        <translation>Der Sensor verlangt mehr, als die Verbindung liefert: Sie überträgt im Mittel %1 MB/s, benötigt werden %2 MB/s. Die Ursache kann eine langsamere Verbindung als gedacht oder ein Hub oder Switch dazwischen sein.</translation>
    </message>
    <message>
        <source>%1 cameras share the link %2, which is full with %3 of %4 MB/s. This camera has %5 MB/s of it, the busiest one %6 MB/s.</source>
        <translation>%1 Kameras teilen sich die Verbindung %2, die mit %3 von %4 MB/s voll ist. Diese Kamera hat davon %5 MB/s, die mit dem größten Anteil %6 MB/s.</translation>
    </message>
    <message>
        <source>The link has short stalls, which the camera&apos;s buffer holds: the slowest block took %1 ms, the buffer was filled to %2 %.</source>
        <translation>Die Verbindung stockt kurz, was der Kamerapuffer überbrückt: Der langsamste Block dauerte %1 ms, der Puffer war bis zu %2 % gefüllt.</translation>
    </message>
    <message>
        <source>The camera&apos;s clock drifts by %1 ppm against this machine&apos;s. One of them may be bad; throughputs are wrong by as much.</source>
        <translation>Die Uhr der Kamera läuft gegenüber der dieses Rechners um %1 ppm falsch. Eine von beiden ist möglicherweise schlecht; um so viel sind auch die Durchsätze falsch.</translation>
    </message>
    <message>
        <source>Only the last %1 s of %2 s are kept. What went wrong may lie before them; a greater capacity keeps more.</source>
        <translation>Nur die letzten %1 s von %2 s sind noch da. Was schiefging, kann davor liegen; eine größere Kapazität behält mehr.</translation>
    </message>
    <message>
        <source>No frame came for up to %1 s, %2 s in all. Triggers may be missing, or the camera or its link may have stopped.</source>
        <translation>Bis zu %1 s lang kam kein Bild, insgesamt %2 s. Möglicherweise fehlen Trigger, oder die Kamera oder ihre Verbindung stand still.</translation>
    </message>
    <message>
        <source>The link may stall for longer than the camera&apos;s buffer can hold, though the average is enough.</source>
        <translation>Die Verbindung stockt möglicherweise länger, als der Kamerapuffer überbrücken kann, obwohl der Mittelwert ausreicht.</translation>
    </message>
    <message>
        <source>One frame would have overflowed it.</source>
        <translation>Ein Bild hätte ihn überlaufen lassen.</translation>
    </message>
    <message numerus="yes">
        <source>%n frames would have overflowed it.</source>
        <translation>
            <numerusform>%n Bild hätte ihn überlaufen lassen.</numerusform>
            <numerusform>%n Bilder hätten ihn überlaufen lassen.</numerusform>
        </translation>
    </message>
    <message>
        <source>The slowest block took %1 ms.</source>
        <translation>Der langsamste Block dauerte %1 ms.</translation>
    </message>
    <message>
        <source>One frame was lost on the link.</source>
        <translation>Ein Bild ging auf der Verbindung verloren.</translation>
    </message>
    <message numerus="yes">
        <source>%n frames were lost on the link.</source>
        <translation>
            <numerusform>%n Bild ging auf der Verbindung verloren.</numerusform>
            <numerusform>%n Bilder gingen auf der Verbindung verloren.</numerusform>
        </translation>
    </message>
    <message>
        <source>A bad cable or plug, interference, or a switch that drops packets may be the cause.</source>
        <translation>Die Ursache kann ein schlechtes Kabel oder ein schlechter Stecker, eine Störung oder ein Switch sein, der Pakete verwirft.</translation>
    </message>
    <message>
        <source>One frame was fetched too late.</source>
        <translation>Ein Bild wurde zu spät abgeholt.</translation>
    </message>
    <message numerus="yes">
        <source>%n frames were fetched too late.</source>
        <translation>
            <numerusform>%n Bild wurde zu spät abgeholt.</numerusform>
            <numerusform>%n Bilder wurden zu spät abgeholt.</numerusform>
        </translation>
    </message>
    <message>
        <source>This machine may be too busy or too slow.</source>
        <translation>Dieser Rechner ist möglicherweise zu beschäftigt oder zu langsam.</translation>
    </message>
    <message>
        <source>One frame is missing.</source>
        <translation>Ein Bild fehlt.</translation>
    </message>
    <message numerus="yes">
        <source>%n frames are missing.</source>
        <translation>
            <numerusform>%n Bild fehlt.</numerusform>
            <numerusform>%n Bilder fehlen.</numerusform>
        </translation>
    </message>
    <message>
        <source>Frames may be lost on the link or fetched too late; the camera&apos;s counters tell which.</source>
        <translation>Bilder können auf der Verbindung verloren gegangen oder zu spät abgeholt worden sein; die Zähler der Kamera sagen, welches.</translation>
    </message>
    <message>
        <source>One trigger came while the sensor was busy.</source>
        <translation>Ein Trigger kam, während der Sensor beschäftigt war.</translation>
    </message>
    <message numerus="yes">
        <source>%n triggers came while the sensor was busy.</source>
        <translation>
            <numerusform>%n Trigger kam, während der Sensor beschäftigt war.</numerusform>
            <numerusform>%n Trigger kamen, während der Sensor beschäftigt war.</numerusform>
        </translation>
    </message>
    <message>
        <source>Triggers may come faster than it exposes and reads out.</source>
        <translation>Trigger kommen möglicherweise schneller, als er belichtet und ausliest.</translation>
    </message>
    <message>
        <source>Once the camera&apos;s buffer was full.</source>
        <translation>Einmal war der Kamerapuffer voll.</translation>
    </message>
    <message numerus="yes">
        <source>%n times the camera&apos;s buffer was full.</source>
        <translation>
            <numerusform>%n-mal war der Kamerapuffer voll.</numerusform>
            <numerusform>%n-mal war der Kamerapuffer voll.</numerusform>
        </translation>
    </message>
    <message>
        <source>The triggers may be too fast for the link, or the link may stall.</source>
        <translation>Die Trigger sind möglicherweise zu schnell für die Verbindung, oder die Verbindung stockt.</translation>
    </message>
    <message>
        <source>Counters of the camera began anew, so how far they counted is not known. The camera may have been restarted, or another program has reset them.</source>
        <translation>Zähler der Kamera haben neu begonnen, deshalb ist nicht bekannt, wie weit sie gezählt haben. Die Kamera wurde möglicherweise neu gestartet, oder ein anderes Programm hat sie zurückgesetzt.</translation>
    </message>
    <message>
        <source>No frame came for up to %1 s, %2 s in all. For %3 s of these the camera was lost: its cable, its power or the camera itself may be the cause.</source>
        <translation>Bis zu %1 s lang kam kein Bild, insgesamt %2 s. Davon war die Kamera %3 s lang verloren: Die Ursache kann ihr Kabel, ihre Stromversorgung oder die Kamera selbst sein.</translation>
    </message>
</context>
<context>
    <name>EventTexts</name>
    <message>
        <source>Start</source>
        <translation>Start</translation>
    </message>
    <message>
        <source>End</source>
        <translation>Ende</translation>
    </message>
    <message>
        <source>Silence</source>
        <translation>Stille</translation>
    </message>
    <message>
        <source>Missing frames</source>
        <translation>Fehlende Bilder</translation>
    </message>
    <message>
        <source>Buffer overflow</source>
        <translation>Pufferüberlauf</translation>
    </message>
    <message>
        <source>%1: %2 s</source>
        <translation>%1: %2 s</translation>
    </message>
    <message>
        <source>%1: %2</source>
        <translation>%1: %2</translation>
    </message>
</context>
<context>
    <name>HostDiagnosis</name>
    <message>
        <source>One frame was lost on the way to this machine.</source>
        <translation>Ein Bild ging auf dem Weg zu diesem Rechner verloren.</translation>
    </message>
    <message numerus="yes">
        <source>%n frames were lost on the way to this machine.</source>
        <translation>
            <numerusform>%n Bild ging auf dem Weg zu diesem Rechner verloren.</numerusform>
            <numerusform>%n Bilder gingen auf dem Weg zu diesem Rechner verloren.</numerusform>
        </translation>
    </message>
    <message>
        <source>A bad cable or plug, interference, or a switch that drops packets may be the cause.</source>
        <translation>Die Ursache kann ein schlechtes Kabel oder ein schlechter Stecker, eine Störung oder ein Switch sein, der Pakete verwirft.</translation>
    </message>
    <message>
        <source>The camera&apos;s packets have %1 bytes, the network interface takes %2. A smaller packet size, or a larger MTU of all that is on the way, may help.</source>
        <translation>Die Pakete der Kamera haben %1 Bytes, die Netzwerkschnittstelle nimmt %2. Kleinere Pakete oder eine größere MTU auf dem ganzen Weg können helfen.</translation>
    </message>
    <message>
        <source>The network interface itself dropped packets meanwhile: %1. A larger ring of the interface (ethtool -G), or fewer and larger packets, may help.</source>
        <translation>Die Netzwerkschnittstelle selbst verwarf währenddessen Pakete: %1. Ein größerer Ring der Schnittstelle (ethtool -G) oder weniger und größere Pakete können helfen.</translation>
    </message>
    <message>
        <source>%1 cameras share the interface %2. Together they may overrun it or a switch on the way; a pause between their packets may help.</source>
        <translation>%1 Kameras teilen sich die Schnittstelle %2. Zusammen können sie diese oder einen Switch auf dem Weg überlasten; eine Pause zwischen ihren Paketen kann helfen.</translation>
    </message>
    <message>
        <source>One frame was lost because the socket&apos;s buffer was full.</source>
        <translation>Ein Bild ging verloren, weil der Puffer des Sockets voll war.</translation>
    </message>
    <message numerus="yes">
        <source>%n frames were lost because the socket&apos;s buffer was full.</source>
        <translation>
            <numerusform>%n Bild ging verloren, weil der Puffer des Sockets voll war.</numerusform>
            <numerusform>%n Bilder gingen verloren, weil der Puffer des Sockets voll war.</numerusform>
        </translation>
    </message>
    <message>
        <source>It may hold %1 bytes, a frame has %2: sysctl net.core.rmem_max=%3 may help.</source>
        <translation>Er darf %1 Bytes fassen, ein Bild hat %2: sysctl net.core.rmem_max=%3 kann helfen.</translation>
    </message>
    <message>
        <source>This machine may be too busy to empty it.</source>
        <translation>Dieser Rechner ist vielleicht zu beschäftigt, ihn zu leeren.</translation>
    </message>
    <message>
        <source>One frame was lost for want of a buffer.</source>
        <translation>Ein Bild ging mangels eines Puffers verloren.</translation>
    </message>
    <message numerus="yes">
        <source>%n frames were lost for want of a buffer.</source>
        <translation>
            <numerusform>%n Bild ging mangels eines Puffers verloren.</numerusform>
            <numerusform>%n Bilder gingen mangels eines Puffers verloren.</numerusform>
        </translation>
    </message>
    <message>
        <source>Who reads the frames may be too slow.</source>
        <translation>Wer die Bilder liest, ist vielleicht zu langsam.</translation>
    </message>
    <message>
        <source>One frame was lost because its packets came too late.</source>
        <translation>Ein Bild ging verloren, weil seine Pakete zu spät kamen.</translation>
    </message>
    <message numerus="yes">
        <source>%n frames were lost because their packets came too late.</source>
        <translation>
            <numerusform>%n Bild ging verloren, weil seine Pakete zu spät kamen.</numerusform>
            <numerusform>%n Bilder gingen verloren, weil ihre Pakete zu spät kamen.</numerusform>
        </translation>
    </message>
    <message>
        <source>The camera or a switch may have held them back.</source>
        <translation>Die Kamera oder ein Switch hat sie vielleicht zurückgehalten.</translation>
    </message>
    <message>
        <source>One frame was lost on this machine, and nothing tells why.</source>
        <translation>Ein Bild ging auf diesem Rechner verloren, der Grund ist nicht erkennbar.</translation>
    </message>
    <message numerus="yes">
        <source>%n frames were lost on this machine, and nothing tells why.</source>
        <translation>
            <numerusform>%n Bild ging auf diesem Rechner verloren, der Grund ist nicht erkennbar.</numerusform>
            <numerusform>%n Bilder gingen auf diesem Rechner verloren, der Grund ist nicht erkennbar.</numerusform>
        </translation>
    </message>
    <message>
        <source>One frame was lost, nobody knows where.</source>
        <translation>Ein Bild ging verloren, niemand weiß wo.</translation>
    </message>
    <message numerus="yes">
        <source>%n frames were lost, nobody knows where.</source>
        <translation>
            <numerusform>%n Bild ging verloren, niemand weiß wo.</numerusform>
            <numerusform>%n Bilder gingen verloren, niemand weiß wo.</numerusform>
        </translation>
    </message>
    <message>
        <source>The tap that sees their packets was not there or did not keep up.</source>
        <translation>Der Mitleser, der ihre Pakete sieht, war nicht da oder kam nicht nach.</translation>
    </message>
    <message>
        <source>The processors of this machine were busy %1 % of the time.</source>
        <translation>Die Prozessoren dieses Rechners waren %1 % der Zeit beschäftigt.</translation>
    </message>
    <message>
        <source>The system lends USB transfers %1 MiB, this camera&apos;s buffers need %2 MiB. A larger usbcore.usbfs_memory_mb may help.</source>
        <translation>Das System überlässt USB-Übertragungen %1 MiB, die Puffer dieser Kamera brauchen %2 MiB. Ein größeres usbcore.usbfs_memory_mb kann helfen.</translation>
    </message>
    <message>
        <source>Data arrived %1 bytes at a time: with a sample period of %2 bytes the lowest throughput is this machine&apos;s, not the link&apos;s. %3 bytes or more tell of the link.</source>
        <translation>Die Daten kamen zu je %1 Bytes an: Bei einer Abtastperiode von %2 Bytes ist der niedrigste Durchsatz der dieses Rechners, nicht der der Verbindung. %3 Bytes oder mehr sagen etwas über die Verbindung.</translation>
    </message>
</context>
<context>
    <name>Tracer</name>
    <message>
        <source>%1 s</source>
        <translation>%1 s</translation>
    </message>
</context>
</TS>
