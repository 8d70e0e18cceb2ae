// A square with a hole, from points to triangles, by P/Invoke. The runtime looks
// for zelvan.dll or libzelvan.so where it looks for every library: beside the
// program, in the system's folders, in LD_LIBRARY_PATH.
using System;
using System.Globalization;
using System.Runtime.InteropServices;

static class Zelvan
{
    const string Library = "zelvan";
    const CallingConvention Convention = CallingConvention.Cdecl;

    [DllImport(Library, CallingConvention = Convention)]
    public static extern int SetMainContour(int count, double[] xyz);
    [DllImport(Library, CallingConvention = Convention)]
    public static extern int SetHole(int count, double[] xyz);
    [DllImport(Library, CallingConvention = Convention)]
    public static extern int Substruct();
    [DllImport(Library, CallingConvention = Convention)]
    public static extern int Triangulate();
    [DllImport(Library, CallingConvention = Convention)]
    public static extern int GetCounts(out int vertices, out int edges, out int faces);
    [DllImport(Library, CallingConvention = Convention)]
    public static extern int GetVertices([Out] double[] xyz);
    [DllImport(Library, CallingConvention = Convention)]
    public static extern int GetEdges([Out] int[] edges);
    [DllImport(Library, CallingConvention = Convention)]
    public static extern int GetFaces([Out] int[] faces);
}

static class Program
{
    static void Check(int result, string what)
    {
        if (result == 0) throw new InvalidOperationException(what + " failed");
    }

    // The corner that edges a and b share.
    static int Shared(int[] edges, int a, int b)
    {
        int first = edges[3 * a];
        return first == edges[3 * b] || first == edges[3 * b + 1] ? first : edges[3 * a + 1];
    }

    static int Main()
    {
        double[] outer = { 0, 0, 0, 10, 0, 0, 10, 10, 0, 0, 10, 0 };
        double[] hole = { 3, 3, 0, 7, 3, 0, 7, 7, 0, 3, 7, 0 };

        Check(Zelvan.SetMainContour(outer.Length, outer), "SetMainContour");
        Check(Zelvan.SetHole(hole.Length, hole), "SetHole");
        Check(Zelvan.Substruct(), "Substruct");
        Check(Zelvan.Triangulate(), "Triangulate");

        int vertexCount, edgeCount, faceCount;
        Check(Zelvan.GetCounts(out vertexCount, out edgeCount, out faceCount), "GetCounts");
        double[] xyz = new double[3 * vertexCount];
        int[] edges = new int[3 * edgeCount];   // vertex, vertex, kind
        int[] faces = new int[3 * faceCount];   // three edges, clockwise
        Check(Zelvan.GetVertices(xyz), "GetVertices");
        Check(Zelvan.GetEdges(edges), "GetEdges");
        Check(Zelvan.GetFaces(faces), "GetFaces");

        double area = 0;
        for (int f = 0; f < faceCount; ++f)
        {
            int e0 = faces[3 * f], e1 = faces[3 * f + 1], e2 = faces[3 * f + 2];
            int a = 3 * Shared(edges, e2, e0), b = 3 * Shared(edges, e1, e2), c = 3 * Shared(edges, e0, e1);
            area += ((xyz[b] - xyz[a]) * (xyz[c + 1] - xyz[a + 1]) -
                     (xyz[b + 1] - xyz[a + 1]) * (xyz[c] - xyz[a])) / 2;
            Console.WriteLine("triangle {0}: {1} {2} {3}", f, a / 3, b / 3, c / 3);
        }
        Console.WriteLine(string.Format(CultureInfo.InvariantCulture,
            "{0} vertices, {1} triangles, area {2:F3}", vertexCount, faceCount, area));
        return 0;
    }
}
