// A Swing text area; what it holds goes to the file named on the command line.
import java.nio.file.Files;
import java.nio.file.Path;
import javax.swing.JFrame;
import javax.swing.JScrollPane;
import javax.swing.JTextArea;
import javax.swing.SwingUtilities;
import javax.swing.Timer;

public final class Area {
    public static void main(String[] arguments) {
        SwingUtilities.invokeLater(() -> show(Path.of(arguments[0])));
    }

    private static void show(Path file) {
        JTextArea area = new JTextArea(30, 80);
        String[] kept = {null};
        new Timer(300, event -> {
            String text = area.getText();
            if (text.equals(kept[0])) return;
            kept[0] = text;
            try {
                Files.writeString(file, text);
            } catch (java.io.IOException error) {
                throw new java.io.UncheckedIOException(error);
            }
        }).start();
        JFrame frame = new JFrame("cible");
        frame.setDefaultCloseOperation(JFrame.EXIT_ON_CLOSE);
        frame.add(new JScrollPane(area));
        frame.pack();
        frame.setVisible(true);
    }
}
