<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="es">
<context>
    <name>DetectedSound</name>
    <message>
        <source>guitar</source>
        <translation>guitarra</translation>
    </message>
    <message>
        <source>violin</source>
        <translation>violín</translation>
    </message>
    <message>
        <source>piano</source>
        <translation>piano</translation>
    </message>
    <message>
        <source>vocal</source>
        <translation>voz</translation>
    </message>
</context>
<context>
    <name>FrequencyPage</name>
    <message>
        <source>Reference A4 in hertz</source>
        <translation>Diapasón A4 en hercios</translation>
    </message>
    <message>
        <source>Hz</source>
        <translation>Hz</translation>
    </message>
    <message>
        <source>Reset to 440 Hz</source>
        <translation>Restablecer a 440 Hz</translation>
    </message>
    <message>
        <source>Stop Listening</source>
        <translation>Dejar de escuchar</translation>
    </message>
    <message>
        <source>Listen for an A</source>
        <translation>Escuchar un la</translation>
    </message>
</context>
<context>
    <name>Input</name>
    <message>
        <source>System default</source>
        <translation>Predeterminada del sistema</translation>
    </message>
    <message>
        <source>%1 (not connected)</source>
        <extracomment>%1 the chosen input&apos;s name on the sound server, which is not there now.</extracomment>
        <translation>%1 (no conectada)</translation>
    </message>
    <message>
        <source>The sound input the tuner listens to. While the chosen input is not connected, the tuner listens to the system default, and returns to the chosen one when it is back.</source>
        <translation>La entrada de sonido que escucha el afinador. Mientras la entrada elegida no esté conectada, el afinador escucha la predeterminada del sistema y vuelve a la elegida cuando regresa.</translation>
    </message>
</context>
<context>
    <name>InputSection</name>
    <message>
        <source>Sound Input</source>
        <translation>Entrada de sonido</translation>
    </message>
</context>
<context>
    <name>Main</name>
    <message>
        <source>Back</source>
        <translation>Atrás</translation>
    </message>
    <message>
        <source>Microphone access</source>
        <translation>Acceso al micrófono</translation>
    </message>
    <message>
        <source>Settings</source>
        <translation>Ajustes</translation>
    </message>
    <message>
        <source>Back (Esc)</source>
        <translation>Atrás (Esc)</translation>
    </message>
    <message>
        <source>Settings (Ctrl+,)</source>
        <translation>Ajustes (Ctrl+,)</translation>
    </message>
    <message>
        <source>More options</source>
        <translation>Más opciones</translation>
    </message>
    <message>
        <source>Enjoying Veltra?</source>
        <translation>¿Te gusta Veltra?</translation>
    </message>
    <message>
        <source>If Veltra helps you play in tune, a rating in your software centre helps other musicians find it.</source>
        <translation>Si Veltra te ayuda a tocar afinado, una valoración en tu centro de software ayudará a otros músicos a encontrarlo.</translation>
    </message>
    <message>
        <source>Rate Veltra</source>
        <translation>Valorar Veltra</translation>
    </message>
    <message>
        <source>Not Now</source>
        <translation>Ahora no</translation>
    </message>
</context>
<context>
    <name>Menu</name>
    <message>
        <source>Rate this App</source>
        <translation>Valorar la aplicación</translation>
    </message>
    <message>
        <source>More Apps</source>
        <translation>Más aplicaciones</translation>
    </message>
    <message>
        <source>Share this App</source>
        <translation>Compartir la aplicación</translation>
    </message>
    <message>
        <source>Contact Us</source>
        <translation>Contacto</translation>
    </message>
    <message>
        <source>I&apos;ve been using this great instrument tuner app by %1 called Veltra for iOS. Check it out! #tuner #ios</source>
        <extracomment>What a user shares about the app; %1 is the makers&apos; social-media handle.</extracomment>
        <translation>Estoy usando Veltra, una gran aplicación afinadora de instrumentos de %1 para iOS. ¡Pruébala! #tuner #ios</translation>
    </message>
    <message>
        <source>Email Unavailable</source>
        <translation>Correo no disponible</translation>
    </message>
    <message>
        <source>You cannot send emails from this device.</source>
        <translation>No se pueden enviar correos desde este dispositivo.</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Cancelar</translation>
    </message>
</context>
<context>
    <name>MessageDialog</name>
    <message>
        <source>OK</source>
        <translation>Aceptar</translation>
    </message>
</context>
<context>
    <name>Picker</name>
    <message>
        <source>A₄ Frequency</source>
        <translation>Frecuencia de A₄</translation>
    </message>
</context>
<context>
    <name>Readout</name>
    <message>
        <source>No note yet</source>
        <translation>Aún no hay nota</translation>
    </message>
    <message>
        <source>%1 Hz</source>
        <extracomment>The frequency heard, as &quot;440.5 Hz&quot;.</extracomment>
        <translation>%1 Hz</translation>
    </message>
    <message>
        <source>%1 sharp</source>
        <extracomment>A note&apos;s name said aloud, as in &quot;C sharp&quot;; %1 is its letter.</extracomment>
        <translation>%1 sostenido</translation>
    </message>
    <message>
        <source>%1 flat</source>
        <extracomment>A note&apos;s name said aloud, as in &quot;B flat&quot;; %1 is its letter.</extracomment>
        <translation>%1 bemol</translation>
    </message>
    <message>
        <source>in tune</source>
        <translation>afinado</translation>
    </message>
    <message>
        <source>%1 cents flat</source>
        <extracomment>How far below the note the pitch is; %1 is a number of cents, as &quot;2.0&quot;.</extracomment>
        <translation>%1 cents bajo</translation>
    </message>
    <message>
        <source>%1 cents sharp</source>
        <extracomment>How far above the note the pitch is; %1 is a number of cents, as &quot;2.0&quot;.</extracomment>
        <translation>%1 cents alto</translation>
    </message>
    <message>
        <source>%1 %2, %3, %4 hertz</source>
        <extracomment>The readout as a screen reader speaks it: %1 the note (&quot;A&quot;, &quot;C sharp&quot;), %2 its octave, %3 how far off it is (&quot;in tune&quot;, &quot;2.0 cents sharp&quot;), %4 the frequency (&quot;440.5&quot;).</extracomment>
        <translation>%1 %2, %3, %4 hercios</translation>
    </message>
    <message>
        <source>concert %1</source>
        <extracomment>Under a transposing instrument&apos;s written note, the concert note that sounds, as &quot;concert C4&quot;.</extracomment>
        <translation>sonido real %1</translation>
    </message>
    <message>
        <source>%1, concert %2 %3</source>
        <extracomment>The readout of a transposing instrument&apos;s written note, then the concert note that sounds: %1 the readout as above, %2 the concert note (&quot;C&quot;, &quot;B flat&quot;), %3 its octave.</extracomment>
        <translation>%1, sonido real %2 %3</translation>
    </message>
</context>
<context>
    <name>ReferenceCapture</name>
    <message>
        <source>Play an A and hold it for a second.</source>
        <translation>Toca un la y mantenlo un segundo.</translation>
    </message>
    <message>
        <source>Reference A set to %1 Hz.</source>
        <extracomment>%1 the new reference in whole hertz (&quot;441&quot;).</extracomment>
        <translation>La de referencia fijado en %1 Hz.</translation>
    </message>
    <message>
        <source>The A heard is %1 Hz, outside 400 to 499 Hz: the reference stays.</source>
        <extracomment>%1 the A heard, in whole hertz (&quot;510&quot;); the reference is kept between 400 and 499 Hz.</extracomment>
        <translation>El la oído está en %1 Hz, fuera de 400 a 499 Hz: la referencia no cambia.</translation>
    </message>
    <message>
        <source>That note is %1 cents from an A. Play an A and try again.</source>
        <extracomment>%1 how far the steady note was from the nearest A, in cents (&quot;98.0&quot;).</extracomment>
        <translation>Esa nota está a %1 cents de un la. Toca un la y vuelve a intentarlo.</translation>
    </message>
    <message>
        <source>No steady A heard. Play an A and hold it for a second.</source>
        <translation>No se oyó un la estable. Toca un la y mantenlo un segundo.</translation>
    </message>
</context>
<context>
    <name>ScalaImportButton</name>
    <message>
        <source>Choose a Scala File</source>
        <extracomment>The title of the file chooser that imports a scale.</extracomment>
        <translation>Elegir un archivo Scala</translation>
    </message>
    <message>
        <source>Scala scales (*.scl)</source>
        <extracomment>The file chooser&apos;s filters: Scala&apos;s scale files, then every file.</extracomment>
        <translation>Escalas Scala (*.scl)</translation>
    </message>
    <message>
        <source>All files (*)</source>
        <translation>Todos los archivos (*)</translation>
    </message>
</context>
<context>
    <name>ScreenSaver</name>
    <message>
        <source>Tuning</source>
        <translation>Afinando</translation>
    </message>
</context>
<context>
    <name>SelectSoundsPage</name>
    <message>
        <source>The readout follows the pitch only while one of the checked sounds is heard.</source>
        <translation>La lectura sigue la altura solo mientras se oye uno de los sonidos marcados.</translation>
    </message>
</context>
<context>
    <name>Settings</name>
    <message>
        <source>The frequency of the A above middle C to be used as the reference for tuning.</source>
        <translation>La frecuencia del A por encima del do central que se usa como referencia para afinar (diapasón).</translation>
    </message>
    <message>
        <source>Display a sine tone generator in the main view.</source>
        <translation>Muestra un generador de tonos sinusoidales en la vista principal.</translation>
    </message>
    <message>
        <source>When enabled, the screen turns green when in tune.</source>
        <translation>Si está activado, la pantalla se vuelve verde cuando está afinado.</translation>
    </message>
    <message>
        <source>When enabled, only the enharmonic sharps are displayed.</source>
        <translation>Si está activado, solo se muestran los sostenidos enarmónicos.</translation>
    </message>
    <message>
        <source>When enabled, the live graph is continuous. When disabled, the graph is plotted only when sound is detected, similar to the older versions of Veltra.</source>
        <translation>Si está activado, la gráfica en vivo es continua. Si está desactivado, solo se dibuja cuando se detecta sonido, como en las versiones antiguas de Veltra.</translation>
    </message>
    <message>
        <source>The width of the center green bar that is considered in tune.</source>
        <translation>El ancho de la franja verde central que se considera afinada.</translation>
    </message>
    <message>
        <source>A lower latency works great when you need faster pitch detection (e.g. vocal practice). By using a higher latency, pitch detection will not respond to momentary unintended sounds and noise (ideal for instrument tuning).</source>
        <translation>Una latencia baja va muy bien cuando necesitas detectar la altura más rápido (p. ej., práctica vocal). Con una latencia mayor, la detección no responde a sonidos momentáneos no deseados ni al ruido (ideal para afinar instrumentos).</translation>
    </message>
    <message>
        <source>Highlights piano key corresponding to the current pitch.</source>
        <translation>Resalta la tecla de piano que corresponde a la altura actual.</translation>
    </message>
    <message>
        <source>Thickness of the line used in the live pitch graph.</source>
        <translation>Grosor de la línea de la gráfica de altura en vivo.</translation>
    </message>
    <message>
        <source>This feature is very helpful for live situations where time needs to be kept track of.</source>
        <translation>Muy útil en directo, cuando hay que estar pendiente de la hora.</translation>
    </message>
    <message>
        <source>Use machine learning to enable pitch detection only when certain instruments or vocal sounds are detected.</source>
        <translation>Usa aprendizaje automático para detectar la altura solo cuando se oyen ciertos instrumentos o la voz.</translation>
    </message>
    <message>
        <source>%1 Hz</source>
        <extracomment>The reference frequency in whole hertz, as &quot;440 Hz&quot;.</extracomment>
        <translation>%1 Hz</translation>
    </message>
    <message>
        <source>Selected Sounds: %1.</source>
        <extracomment>%1 is the list of the sounds chosen, as &quot;Guitar and Piano&quot;.</extracomment>
        <translation>Sonidos elegidos: %1.</translation>
    </message>
    <message>
        <source>Settings</source>
        <translation>Ajustes</translation>
    </message>
</context>
<context>
    <name>SettingsPage</name>
    <message>
        <source>Reference A₄</source>
        <translation>Diapasón A₄</translation>
    </message>
    <message>
        <source>Tone Generator</source>
        <translation>Generador de tonos</translation>
    </message>
    <message>
        <source>Green Overlay</source>
        <translation>Pantalla verde</translation>
    </message>
    <message>
        <source>Sharps Only</source>
        <translation>Solo sostenidos</translation>
    </message>
    <message>
        <source>Continuous Display</source>
        <translation>Visualización continua</translation>
    </message>
    <message>
        <source>In-Tune Bar</source>
        <translation>Margen de afinación</translation>
    </message>
    <message>
        <source>Wide ±15¢</source>
        <translation>Amplio ±15¢</translation>
    </message>
    <message>
        <source>Medium ±10¢</source>
        <translation>Medio ±10¢</translation>
    </message>
    <message>
        <source>Narrow ±5¢</source>
        <translation>Estrecho ±5¢</translation>
    </message>
    <message>
        <source>Wide, 15 cents either side</source>
        <translation>Amplio, 15 cents a cada lado</translation>
    </message>
    <message>
        <source>Medium, 10 cents either side</source>
        <translation>Medio, 10 cents a cada lado</translation>
    </message>
    <message>
        <source>Narrow, 5 cents either side</source>
        <translation>Estrecho, 5 cents a cada lado</translation>
    </message>
    <message>
        <source>Latency</source>
        <translation>Latencia</translation>
    </message>
    <message>
        <source>%1 s</source>
        <extracomment>A time in seconds, as &quot;0.25 s&quot;.</extracomment>
        <translation>%1 s</translation>
    </message>
    <message>
        <source>Fast</source>
        <translation>Rápida</translation>
    </message>
    <message>
        <source>Steady</source>
        <translation>Estable</translation>
    </message>
    <message>
        <source>Piano Keyboard</source>
        <translation>Teclado de piano</translation>
    </message>
    <message>
        <source>Line Thickness</source>
        <translation>Grosor de línea</translation>
    </message>
    <message>
        <source>Thin</source>
        <translation>Fina</translation>
    </message>
    <message>
        <source>Bold</source>
        <translation>Gruesa</translation>
    </message>
    <message>
        <source>Clock</source>
        <translation>Reloj</translation>
    </message>
    <message>
        <source>Sound Classification</source>
        <translation>Clasificación de sonidos</translation>
    </message>
    <message>
        <source>Select Sounds</source>
        <translation>Elegir sonidos</translation>
    </message>
</context>
<context>
    <name>ShareDialog</name>
    <message>
        <source>Share this App</source>
        <translation>Compartir la aplicación</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Cerrar</translation>
    </message>
    <message>
        <source>Copied</source>
        <translation>Copiado</translation>
    </message>
    <message>
        <source>Copy</source>
        <translation>Copiar</translation>
    </message>
</context>
<context>
    <name>SoundList</name>
    <message>
        <source>Guitar</source>
        <translation>guitarra</translation>
    </message>
    <message>
        <source>Violin</source>
        <translation>violín</translation>
    </message>
    <message>
        <source>Piano</source>
        <translation>piano</translation>
    </message>
    <message>
        <source>Voice</source>
        <translation>voz</translation>
    </message>
    <message>
        <source>%1 and %2</source>
        <extracomment>The last joint of a list of sounds: &quot;Guitar, Violin and Voice&quot;.</extracomment>
        <translation>%1 y %2</translation>
    </message>
    <message>
        <source>%1, %2</source>
        <extracomment>Every other joint of a list of sounds: &quot;Guitar, Violin and Voice&quot;.</extracomment>
        <translation>%1, %2</translation>
    </message>
</context>
<context>
    <name>Sounds</name>
    <message>
        <source>Select Sounds</source>
        <translation>Elegir sonidos</translation>
    </message>
    <message>
        <source>Guitar</source>
        <translation>Guitarra</translation>
    </message>
    <message>
        <source>Violin</source>
        <translation>Violín</translation>
    </message>
    <message>
        <source>Piano</source>
        <translation>Piano</translation>
    </message>
    <message>
        <source>Voice</source>
        <translation>Voz</translation>
    </message>
</context>
<context>
    <name>Temperament</name>
    <message>
        <source>Equal temperament</source>
        <translation>Temperamento igual</translation>
    </message>
    <message>
        <source>Pythagorean</source>
        <translation>Pitagórico</translation>
    </message>
    <message>
        <source>Quarter-comma meantone</source>
        <translation>Mesotónico de 1/4 de coma</translation>
    </message>
    <message>
        <source>Sixth-comma meantone</source>
        <translation>Mesotónico de 1/6 de coma</translation>
    </message>
    <message>
        <source>Werckmeister III</source>
        <translation>Werckmeister III</translation>
    </message>
    <message>
        <source>Kirnberger III</source>
        <translation>Kirnberger III</translation>
    </message>
    <message>
        <source>Vallotti</source>
        <translation>Vallotti</translation>
    </message>
    <message>
        <source>Young (1799)</source>
        <translation>Young (1799)</translation>
    </message>
    <message>
        <source>Just intonation (5-limit)</source>
        <translation>Entonación justa (límite 5)</translation>
    </message>
    <message>
        <source>Imported scale</source>
        <translation>Escala importada</translation>
    </message>
</context>
<context>
    <name>ToneGenerator</name>
    <message>
        <source>%1 sharp</source>
        <extracomment>A note&apos;s name said aloud, as in &quot;C sharp&quot;; %1 is its letter.</extracomment>
        <translation>%1 sostenido</translation>
    </message>
    <message>
        <source>%1 flat</source>
        <extracomment>A note&apos;s name said aloud, as in &quot;B flat&quot;; %1 is its letter.</extracomment>
        <translation>%1 bemol</translation>
    </message>
    <message>
        <source>Play %1</source>
        <extracomment>A reference-tone button as a screen reader names it; %1 is the note, as &quot;C sharp&quot;.</extracomment>
        <translation>Tocar %1</translation>
    </message>
    <message>
        <source>Octave %1</source>
        <translation>Octava %1</translation>
    </message>
</context>
<context>
    <name>Tuner</name>
    <message>
        <source>Microphone Access Required</source>
        <translation>Se necesita acceso al micrófono</translation>
    </message>
    <message>
        <source>This app requires access to the microphone to work. Go to Settings -&gt; Privacy -&gt; Microphone and enable Veltra to give access.</source>
        <translation>Esta aplicación necesita acceso al micrófono para funcionar. Ve a Ajustes → Privacidad → Micrófono y permite el acceso a Veltra.</translation>
    </message>
    <message>
        <source>Dismiss</source>
        <translation>Cerrar</translation>
    </message>
    <message>
        <source>Detected %1 sound</source>
        <extracomment>%1 is the kind of sound heard: guitar, violin, piano or vocal.</extracomment>
        <translation>Sonido de %1 detectado</translation>
    </message>
    <message>
        <source>Listening...</source>
        <translation>Escuchando…</translation>
    </message>
    <message>
        <source>Listening paused: no sound input</source>
        <translation>Escucha en pausa: no hay entrada de sonido</translation>
    </message>
</context>
<context>
    <name>TunerPage</name>
    <message>
        <source>Pitch graph</source>
        <translation>Gráfica de altura</translation>
    </message>
    <message>
        <source>Piano keyboard</source>
        <translation>Teclado de piano</translation>
    </message>
</context>
<context>
    <name>TuningSettings</name>
    <message>
        <source>Tuning System</source>
        <translation>Sistema de afinación</translation>
    </message>
    <message>
        <source>Tonic</source>
        <translation>Tónica</translation>
    </message>
    <message>
        <source>Import Scala File…</source>
        <translation>Importar archivo Scala…</translation>
    </message>
    <message>
        <source>Path of a .scl file</source>
        <translation>Ruta de un archivo .scl</translation>
    </message>
    <message>
        <source>Instrument Key</source>
        <translation>Tonalidad del instrumento</translation>
    </message>
    <message>
        <source>Transposition</source>
        <translation>Transposición</translation>
    </message>
    <message>
        <source>C (concert)</source>
        <translation>Do (sonido real)</translation>
    </message>
    <message>
        <source>This scale cannot be used: %1</source>
        <extracomment>%1 is why, in English, as &quot;line 4: the pitches must rise from the tonic to the octave&quot;.</extracomment>
        <translation>Esta escala no se puede usar: %1</translation>
    </message>
    <message>
        <source>Equal temperament divides the octave into twelve equal semitones. A historical temperament or just intonation gives each note of the scale on the tonic its own pitch, and the tuner shows a note as in tune when it is in tune there; the reference A stays where it is. Import a Scala file (.scl) of twelve notes to tune to your own table.</source>
        <translation>El temperamento igual divide la octava en doce semitonos iguales. Un temperamento histórico o la entonación justa da a cada nota de la escala sobre la tónica su propia altura, y el afinador muestra una nota afinada cuando lo está en ese sistema; el La de referencia no cambia. Importe un archivo Scala (.scl) de doce notas para afinar con su propia tabla.</translation>
    </message>
    <message>
        <source>For transposing instruments: the tuner names the notes as they are written for an instrument in this key, and the tone buttons play the written notes. B♭ for clarinet and trumpet, E♭ for alto saxophone, F for horn; any other key as the semitones its written C sounds from concert C.</source>
        <translation>Para instrumentos transpositores: el afinador nombra las notas como se escriben para un instrumento en esta tonalidad, y los botones de tono tocan las notas escritas. Si♭ para clarinete y trompeta, Mi♭ para saxofón alto, Fa para trompa; cualquier otra tonalidad como los semitonos entre su Do escrito y el Do real.</translation>
    </message>
</context>
</TS>
