<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de" sourcelanguage="en">
<context>
    <name>AravisCamera</name>
    <message>
        <source>&quot;%1&quot; is no address of a camera</source>
        <translation>„%1“ ist keine Adresse einer Kamera</translation>
    </message>
    <message>
        <source>no answer in time</source>
        <translation>keine Antwort in der gegebenen Zeit</translation>
    </message>
    <message>
        <source>a USB3 Vision camera&apos;s data have no times of arrival, which the throughput is measured by</source>
        <translation>die Daten einer USB3-Vision-Kamera haben keine Ankunftszeiten, mit denen der Durchsatz gemessen wird</translation>
    </message>
    <message>
        <source>Times of arrival</source>
        <translation>Ankunftszeiten</translation>
    </message>
</context>
<context>
    <name>CameraConnection</name>
    <message>
        <source>no answer. Is the camera switched on, and is this its address?</source>
        <translation>keine Antwort. Ist die Kamera eingeschaltet, und ist dies ihre Adresse?</translation>
    </message>
    <message>
        <source>another program or computer has control of the camera</source>
        <translation>ein anderes Programm oder ein anderer Rechner steuert die Kamera</translation>
    </message>
    <message>
        <source>refused: %1</source>
        <translation>abgelehnt: %1</translation>
    </message>
    <message>
        <source>there is no way to this address. Is the network interface up?</source>
        <translation>zu dieser Adresse führt kein Weg. Ist die Netzwerkschnittstelle in Betrieb?</translation>
    </message>
    <message>
        <source>no camera with this serial number answers</source>
        <translation>keine Kamera mit dieser Seriennummer antwortet</translation>
    </message>
</context>
<context>
    <name>CameraDock</name>
    <message>
        <source>Cameras</source>
        <translation>Kameras</translation>
    </message>
    <message>
        <source>Open or close the selected camera; closing ends a measurement with it</source>
        <translation>Die ausgewählte Kamera öffnen oder schließen; Schließen beendet eine Messung mit ihr</translation>
    </message>
    <message>
        <source>Start or stop showing live images of the selected camera</source>
        <translation>Livebilder der ausgewählten Kamera zeigen oder anhalten</translation>
    </message>
    <message>
        <source>The image format of the selected camera</source>
        <translation>Das Bildformat der ausgewählten Kamera</translation>
    </message>
    <message>
        <source>Image format</source>
        <translation>Bildformat</translation>
    </message>
    <message>
        <source>Fo&amp;rmat:</source>
        <translation>Fo&amp;rmat:</translation>
    </message>
    <message>
        <source>&amp;Open</source>
        <translation>Ö&amp;ffnen</translation>
    </message>
    <message>
        <source>&amp;Stop view</source>
        <translation>Ansicht a&amp;nhalten</translation>
    </message>
    <message>
        <source>&amp;Start view</source>
        <translation>Ansicht &amp;starten</translation>
    </message>
    <message>
        <source>%1 could not be opened</source>
        <translation>%1 konnte nicht geöffnet werden</translation>
    </message>
    <message>
        <source>%1 could not be started</source>
        <translation>%1 konnte nicht gestartet werden</translation>
    </message>
    <message>
        <source>%1 refused the format %2</source>
        <translation>%1 hat das Format %2 abgelehnt</translation>
    </message>
    <message>
        <source>Open or close the camera</source>
        <translation>Kamera öffnen oder schließen</translation>
    </message>
    <message>
        <source>Start or stop its view</source>
        <translation>Ihre Ansicht starten oder anhalten</translation>
    </message>
    <message>
        <source>Sort cameras by the next column</source>
        <translation>Kameras nach der nächsten Spalte sortieren</translation>
    </message>
    <message>
        <source>Clos&amp;e</source>
        <translation>S&amp;chließen</translation>
    </message>
</context>
<context>
    <name>CameraEvents</name>
    <message>
        <source>A camera</source>
        <translation>Eine Kamera</translation>
    </message>
    <message>
        <source>%1 opened</source>
        <translation>%1 geöffnet</translation>
    </message>
    <message>
        <source>%1 closed</source>
        <translation>%1 geschlossen</translation>
    </message>
    <message>
        <source>%1 lost</source>
        <translation>%1 verloren</translation>
    </message>
    <message>
        <source>%1 is back</source>
        <translation>%1 ist wieder da</translation>
    </message>
    <message>
        <source>%1 taken over by a plug-in</source>
        <translation>%1 von Plug-in belegt</translation>
    </message>
    <message>
        <source>%1 given back</source>
        <translation>%1 wieder frei</translation>
    </message>
    <message>
        <source>%1 sends frames again</source>
        <translation>%1 sendet wieder Bilder</translation>
    </message>
    <message>
        <source>%1 is measured but has sent no frame for %2 s</source>
        <translation>%1 wird gemessen, hat aber seit %2 s kein Bild gesendet</translation>
    </message>
    <message>
        <source>%1 lost frames: %2</source>
        <translation>%1: verlorene Bilder: %2</translation>
    </message>
</context>
<context>
    <name>CameraList</name>
    <message>
        <source>Camera</source>
        <translation>Kamera</translation>
    </message>
    <message>
        <source>Id</source>
        <translation>Id</translation>
    </message>
    <message>
        <source>State</source>
        <translation>Zustand</translation>
    </message>
    <message>
        <source>MB/s</source>
        <translation>MB/s</translation>
    </message>
    <message>
        <source>Frames/s</source>
        <translation>Bilder/s</translation>
    </message>
    <message>
        <source>Missing</source>
        <translation>Fehlend</translation>
    </message>
    <message>
        <source>What the camera delivers, to the view or to a plug-in</source>
        <translation>Was die Kamera liefert, der Ansicht oder einem Plug-in</translation>
    </message>
    <message>
        <source>Frames that did not arrive since the camera was opened</source>
        <translation>Bilder, die seit dem Öffnen der Kamera nicht ankamen</translation>
    </message>
    <message>
        <source>Cameras</source>
        <translation>Kameras</translation>
    </message>
    <message>
        <source>The cameras of this machine; the selected one is shown in the middle.
Enter or a double click opens a camera, typing searches for its name,
a click on a heading sorts.</source>
        <translation>Die Kameras dieses Rechners; die ausgewählte ist in der Mitte zu sehen.
Eingabe oder Doppelklick öffnet eine Kamera, Tippen sucht ihren Namen,
ein Klick auf eine Überschrift sortiert.</translation>
    </message>
    <message>
        <source>lost</source>
        <translation>verloren</translation>
    </message>
    <message>
        <source>closed</source>
        <translation>geschlossen</translation>
    </message>
    <message>
        <source>silent %1 s</source>
        <translation>still seit %1 s</translation>
    </message>
    <message>
        <source>measuring</source>
        <translation>misst</translation>
    </message>
    <message>
        <source>live</source>
        <translation>live</translation>
    </message>
    <message>
        <source>open</source>
        <translation>offen</translation>
    </message>
</context>
<context>
    <name>CameraSelection</name>
    <message>
        <source>there is no camera &quot;%1&quot;</source>
        <translation>es gibt keine Kamera „%1“</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is the name of several cameras, give one&apos;s ID: %2</source>
        <translation>„%1“ heißen mehrere Kameras, bitte die ID einer davon angeben: %2</translation>
    </message>
</context>
<context>
    <name>CxExportToolButton</name>
    <message>
        <source>Copy to clipboard</source>
        <translation>In die Zwischenablage kopieren</translation>
    </message>
    <message>
        <source>Save to file...</source>
        <translation>In Datei speichern...</translation>
    </message>
</context>
<context>
    <name>DeviceFamilies</name>
    <message>
        <source>GigE Vision and USB3 Vision are not installed (package kestrova-aravis)</source>
        <translation>GigE Vision und USB3 Vision sind nicht installiert (Paket kestrova-aravis)</translation>
    </message>
</context>
<context>
    <name>EventDock</name>
    <message>
        <source>Events</source>
        <translation>Ereignisse</translation>
    </message>
    <message>
        <source>C&amp;lear</source>
        <translation>&amp;Leeren</translation>
    </message>
    <message>
        <source>Empty the list</source>
        <translation>Die Liste leeren</translation>
    </message>
    <message>
        <source>Clear the event list</source>
        <translation>Ereignisliste leeren</translation>
    </message>
    <message>
        <source>S&amp;ave...</source>
        <translation>Sp&amp;eichern...</translation>
    </message>
    <message>
        <source>Save the event list</source>
        <translation>Ereignisliste speichern</translation>
    </message>
    <message>
        <source>Text files (*.txt);;All files (*)</source>
        <translation>Text files (*.txt);;All files (*)</translation>
    </message>
    <message>
        <source>The list could not be saved.
%1: %2</source>
        <translation>Die Liste konnte nicht gespeichert werden.
%1: %2</translation>
    </message>
    <message>
        <source>What has happened, the newest line at the end; equal events share a line</source>
        <translation>Was geschehen ist, die neueste Zeile am Ende; gleiche Ereignisse teilen sich eine Zeile</translation>
    </message>
    <message>
        <source>The list keeps the last 100,000 events</source>
        <translation>Die Liste behält die letzten 100.000 Ereignisse</translation>
    </message>
    <message>
        <source>Write every event with its time into a text file</source>
        <translation>Jedes Ereignis mit seiner Zeit in eine Textdatei schreiben</translation>
    </message>
    <message>
        <source>No longer kept: %1</source>
        <translation>Nicht mehr aufbewahrt: %1</translation>
    </message>
</context>
<context>
    <name>EventLog</name>
    <message>
        <source>Time</source>
        <translation>Zeit</translation>
    </message>
    <message>
        <source>Count</source>
        <translation>Anzahl</translation>
    </message>
    <message>
        <source>Event</source>
        <translation>Ereignis</translation>
    </message>
    <message>
        <source>Older events that are no longer kept: %1</source>
        <translation>Ältere Ereignisse, die nicht mehr aufbewahrt werden: %1</translation>
    </message>
</context>
<context>
    <name>ImageView</name>
    <message>
        <source>Mono 8</source>
        <translation>Mono 8</translation>
    </message>
    <message>
        <source>Mono 16 (%1 bit)</source>
        <translation>Mono 16 (%1 Bit)</translation>
    </message>
    <message>
        <source>Transport data</source>
        <translation>Transportdaten</translation>
    </message>
    <message>
        <source>Format %1</source>
        <translation>Format %1</translation>
    </message>
    <message>
        <source>Image of the selected camera</source>
        <translation>Bild der ausgewählten Kamera</translation>
    </message>
    <message>
        <source>The newest image of the camera that is selected in the list</source>
        <translation>Das neueste Bild der Kamera, die in der Liste ausgewählt ist</translation>
    </message>
    <message>
        <source>%1   %2 × %3   frame %4</source>
        <translation>%1   %2 × %3   Bild %4</translation>
    </message>
    <message>
        <source>   %1 frames/s</source>
        <translation>   %1 Bilder/s</translation>
    </message>
    <message>
        <source>No image yet. Press &quot;Start view&quot;, or start a measurement.</source>
        <translation>Noch kein Bild. „Ansicht starten“ drücken oder eine Messung beginnen.</translation>
    </message>
    <message>
        <source>No open camera is selected.</source>
        <translation>Keine offene Kamera ist ausgewählt.</translation>
    </message>
</context>
<context>
    <name>LostFrames</name>
    <message>
        <source>%1 on the way</source>
        <translation>%1 unterwegs</translation>
    </message>
    <message>
        <source>%1 in the socket</source>
        <translation>%1 im Socket</translation>
    </message>
    <message>
        <source>%1 for want of a buffer</source>
        <translation>%1 mangels Puffer</translation>
    </message>
    <message>
        <source>%1 too late</source>
        <translation>%1 zu spät</translation>
    </message>
    <message>
        <source>%1 on this host, nothing tells why</source>
        <translation>%1 auf diesem Rechner, der Grund ist nicht erkennbar</translation>
    </message>
    <message>
        <source>%1 nobody knows where</source>
        <translation>%1, niemand weiß wo</translation>
    </message>
</context>
<context>
    <name>MainWindow</name>
    <message>
        <source>Kestrova</source>
        <translation>Kestrova</translation>
    </message>
    <message>
        <source>&amp;File</source>
        <translation>&amp;Datei</translation>
    </message>
    <message>
        <source>&amp;Quit</source>
        <translation>&amp;Beenden</translation>
    </message>
    <message>
        <source>Ctrl+Q</source>
        <translation>Ctrl+Q</translation>
    </message>
    <message>
        <source>&amp;View</source>
        <translation>&amp;Ansicht</translation>
    </message>
    <message>
        <source>&amp;Detail level</source>
        <translation>&amp;Detailstufe</translation>
    </message>
    <message>
        <source>How much plug-ins show</source>
        <translation>Wie viel die Plug-ins zeigen</translation>
    </message>
    <message>
        <source>&amp;1  Beginner</source>
        <translation>&amp;1  Einsteiger</translation>
    </message>
    <message>
        <source>&amp;3  Standard</source>
        <translation>&amp;3  Standard</translation>
    </message>
    <message>
        <source>&amp;5  Developer</source>
        <translation>&amp;5  Entwickler</translation>
    </message>
    <message>
        <source>&amp;Help</source>
        <translation>&amp;Hilfe</translation>
    </message>
    <message>
        <source>&amp;Plug-ins...</source>
        <translation>&amp;Plug-ins...</translation>
    </message>
    <message>
        <source>&amp;About Kestrova...</source>
        <translation>&amp;Über Kestrova...</translation>
    </message>
    <message>
        <source>About &amp;Qt...</source>
        <translation>Über &amp;Qt...</translation>
    </message>
    <message>
        <source>About Kestrova</source>
        <translation>Über Kestrova</translation>
    </message>
    <message>
        <source>&lt;h3&gt;Kestrova %1&lt;/h3&gt;&lt;p&gt;Views machine-vision cameras and measures their data throughput.&lt;/p&gt;&lt;p&gt;Kestrova Imaging, &lt;a href=&quot;https://kestrova.example&quot;&gt;kestrova.example&lt;/a&gt;&lt;/p&gt;&lt;p&gt;Free software under the GNU General Public License, version 3 or later.&lt;/p&gt;</source>
        <translation>&lt;h3&gt;Kestrova %1&lt;/h3&gt;&lt;p&gt;Zeigt Industriekameras und misst ihren Datendurchsatz.&lt;/p&gt;&lt;p&gt;Kestrova Imaging, &lt;a href=&quot;https://kestrova.example&quot;&gt;kestrova.example&lt;/a&gt;&lt;/p&gt;&lt;p&gt;Freie Software unter der GNU General Public License, Version 3 oder später.&lt;/p&gt;</translation>
    </message>
    <message>
        <source>&amp;Reset layout</source>
        <translation>Anordnung &amp;zurücksetzen</translation>
    </message>
    <message>
        <source>Ctrl+Shift+R</source>
        <translation>Ctrl+Shift+R</translation>
    </message>
    <message>
        <source>&amp;Picture</source>
        <translation>&amp;Bild</translation>
    </message>
    <message>
        <source>Ctrl+Shift+P</source>
        <translation>Ctrl+Shift+P</translation>
    </message>
    <message>
        <source>&amp;2  Basic</source>
        <translation>&amp;2  Grundlegend</translation>
    </message>
    <message>
        <source>&amp;4  Expert</source>
        <translation>&amp;4  Experte</translation>
    </message>
    <message>
        <source>&amp;Cameras</source>
        <translation>&amp;Kameras</translation>
    </message>
    <message>
        <source>&amp;Shortcuts...</source>
        <translation>&amp;Tastenkürzel...</translation>
    </message>
</context>
<context>
    <name>MessageQueue</name>
    <message>
        <source>%1 log messages were dropped</source>
        <translation>%1 Protokollzeilen sind entfallen</translation>
    </message>
    <message>
        <source>Thread %1, %2 line %3, %4</source>
        <translation>Thread %1, %2 Zeile %3, %4</translation>
    </message>
</context>
<context>
    <name>PacketTap</name>
    <message>
        <source>the times of arrival need the right to capture packets. As root: setcap cap_net_raw=ep %1</source>
        <translation>die Ankunftszeiten brauchen das Recht, Pakete mitzulesen. Als root: setcap cap_net_raw=ep %1</translation>
    </message>
    <message>
        <source>kestrova-tap failed in step %1: %2</source>
        <translation>kestrova-tap scheiterte im Schritt %1: %2</translation>
    </message>
    <message>
        <source>kestrova-tap does not answer</source>
        <translation>kestrova-tap antwortet nicht</translation>
    </message>
    <message>
        <source>kestrova-tap ended at once</source>
        <translation>kestrova-tap endete sofort</translation>
    </message>
    <message>
        <source>the program %1, which tells times of arrival, cannot be started</source>
        <translation>das Programm %1, das die Ankunftszeiten liefert, kann nicht gestartet werden</translation>
    </message>
</context>
<context>
    <name>PluginManager</name>
    <message>
        <source>It is no plug-in. %1</source>
        <translation>Es ist kein Plug-in. %1</translation>
    </message>
    <message>
        <source>It is a plug-in for another program (%1).</source>
        <translation>Es ist ein Plug-in für ein anderes Programm (%1).</translation>
    </message>
    <message>
        <source>It cannot be loaded. %1</source>
        <translation>Es kann nicht geladen werden. %1</translation>
    </message>
    <message>
        <source>It does not have the interface %1.</source>
        <translation>Es hat die Schnittstelle %1 nicht.</translation>
    </message>
    <message>
        <source>It could not be initialised.</source>
        <translation>Es konnte nicht initialisiert werden.</translation>
    </message>
    <message>
        <source>Others can change what this plug-in does: they can write to %1.</source>
        <translation>Andere können ändern, was dieses Plug-in tut: Sie dürfen in %1 schreiben.</translation>
    </message>
    <message>
        <source>It ran out of memory.</source>
        <translation>Ihm ging der Speicher aus.</translation>
    </message>
    <message>
        <source>It failed: %1</source>
        <translation>Es ist fehlgeschlagen: %1</translation>
    </message>
    <message>
        <source>It failed without a reason.</source>
        <translation>Es ist ohne Angabe eines Grundes fehlgeschlagen.</translation>
    </message>
</context>
<context>
    <name>PluginsDialog</name>
    <message>
        <source>Not used</source>
        <translation>Nicht benutzt</translation>
    </message>
    <message>
        <source>Name</source>
        <translation>Name</translation>
    </message>
    <message>
        <source>Description</source>
        <translation>Beschreibung</translation>
    </message>
    <message>
        <source>Version</source>
        <translation>Version</translation>
    </message>
    <message>
        <source>Author</source>
        <translation>Autor</translation>
    </message>
    <message>
        <source>Website</source>
        <translation>Website</translation>
    </message>
    <message>
        <source>File</source>
        <translation>Datei</translation>
    </message>
    <message>
        <source>Plug-ins</source>
        <translation>Plug-ins</translation>
    </message>
    <message>
        <source>Plug-in files</source>
        <translation>Plug-in-Dateien</translation>
    </message>
    <message>
        <source>The files that were found in the plug-in directories</source>
        <translation>Die Dateien, die in den Plug-in-Verzeichnissen gefunden wurden</translation>
    </message>
    <message>
        <source>Details of the selected plug-in</source>
        <translation>Einzelheiten des ausgewählten Plug-ins</translation>
    </message>
    <message>
        <source>%1 (not used)</source>
        <translation>%1 (nicht benutzt)</translation>
    </message>
    <message>
        <source>No plug-in was found.</source>
        <translation>Es wurde kein Plug-in gefunden.</translation>
    </message>
    <message>
        <source>Caution</source>
        <translation>Vorsicht</translation>
    </message>
</context>
<context>
    <name>RealCameras</name>
    <message>
        <source>&amp;Search...</source>
        <translation>&amp;Suchen...</translation>
    </message>
    <message>
        <source>&amp;Add by address...</source>
        <translation>Nach &amp;Adresse hinzufügen...</translation>
    </message>
    <message>
        <source>Connecting to %1</source>
        <translation>Verbinde mit %1</translation>
    </message>
    <message>
        <source>Add a camera</source>
        <translation>Kamera hinzufügen</translation>
    </message>
    <message>
        <source>Address, such as gev:192.168.0.5 (GigE Vision) or usb:SERIAL (USB3 Vision):</source>
        <translation>Adresse, etwa gev:192.168.0.5 (GigE Vision) oder usb:SERIENNUMMER (USB3 Vision):</translation>
    </message>
    <message>
        <source>Searching for cameras on all networks and the USB</source>
        <translation>Suche Kameras in allen Netzen und am USB</translation>
    </message>
    <message>
        <source>Search</source>
        <translation>Suchen</translation>
    </message>
    <message>
        <source>No camera answers.</source>
        <translation>Keine Kamera antwortet.</translation>
    </message>
    <message>
        <source>These cameras answer. Open one:</source>
        <translation>Diese Kameras antworten. Zu öffnen ist:</translation>
    </message>
</context>
<context>
    <name>ShortcutsDialog</name>
    <message>
        <source>Shortcuts</source>
        <translation>Tastenkürzel</translation>
    </message>
    <message>
        <source>Action</source>
        <translation>Aktion</translation>
    </message>
    <message>
        <source>Keys</source>
        <translation>Tasten</translation>
    </message>
</context>
<context>
    <name>Viewer</name>
    <message>
        <source>The settings file was damaged and is now %1; the viewer begins with defaults</source>
        <translation>Die Einstellungsdatei war beschädigt und heißt jetzt %1; der Betrachter beginnt mit den Vorgaben</translation>
    </message>
    <message>
        <source>There is no plug-in directory %1</source>
        <translation>Es gibt kein Plug-in-Verzeichnis %1</translation>
    </message>
    <message>
        <source>%1 could not be opened</source>
        <translation>%1 konnte nicht geöffnet werden</translation>
    </message>
    <message>
        <source>The settings could not be saved in %1</source>
        <translation>Die Einstellungen konnten nicht in %1 gespeichert werden</translation>
    </message>
    <message>
        <source>No plug-in has a &quot;Start All&quot; button</source>
        <translation>Kein Plug-in hat einen Knopf „Alle starten“</translation>
    </message>
    <message>
        <source>Plug-in %1 is not used. %2</source>
        <translation>Das Plug-in %1 wird nicht verwendet. %2</translation>
    </message>
    <message>
        <source>%1: %2</source>
        <translation>%1: %2</translation>
    </message>
</context>
</TS>
